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
  /// Where to go on: 0 nowhere, n to nodes_[n - 1], -n to prefixes_[n - 1].
  using Link = std::int32_t;

  /// A place at which prefixes with the same beginning differ, with a link for each byte from the
  /// lowest to the highest that they have there.
  struct Node {
    std::size_t position;
    std::size_t firstLink;
    unsigned linkCount;
    unsigned lowest;
  };

  /// Prefixes with the same beginning, neighbours in the sorted list, and the link to them.
  struct Range {
    std::size_t first;
    std::size_t last;
    std::size_t link;
  };

  void keepDecidingPrefixes();
  void buildTree();
  void addNode(const Range& range, std::vector<Range>& pending);

  std::vector<std::string> prefixes_;
  std::vector<Node> nodes_;
  std::vector<Link> links_;
};

}  // namespace sentrel
