#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sentrel {

/// Tells whether a text begins with any of a set of lower-case prefixes, without trying them all.
///
/// Of the prefixes only those are kept that begin with no other one: the rest can never decide.
/// A tree of the places at which these differ leads from a text's own bytes to the only one that
/// can be its beginning, over as many steps as there are such places on the way.
class PrefixIndex {
 public:
  PrefixIndex() = default;

  /// `prefixes` are in lower case already, in any order, duplicates allowed.
  explicit PrefixIndex(std::vector<std::string> prefixes);

  /// Whether `text` begins with one of the prefixes. Its ASCII letters are read as lower case;
  /// other letters are to be in lower case already. Allocates nothing.
  bool beginsWithAny(std::string_view text) const noexcept;

 private:
  /// A place at which prefixes with the same beginning differ, with a node for each byte from the
  /// lowest to the highest that they have there: one after the other from `first` on, so that the
  /// way down reads nothing but nodes and the text. Without such nodes it is the end of the way: at
  /// the prefix `first`, or nowhere.
  struct Node {
    std::uint32_t position = 0;
    std::uint32_t first = 0;
    std::uint16_t count = 0;
    std::uint8_t lowest = 0;
    bool isPrefix = false;
  };

  /// Prefixes with the same beginning, neighbours in the sorted list, and the node for them.
  struct Range {
    std::size_t first;
    std::size_t last;
    std::size_t node;
  };

  void keepDecidingPrefixes();
  void buildTree();
  void branch(const Range& range, std::vector<Range>& pending);

  std::vector<std::string> prefixes_;
  std::vector<Node> nodes_;
};

}  // namespace sentrel
