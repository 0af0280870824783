#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sentrel {

/// Tells whether a text begins with any of a set of lower-case prefixes, without trying them all.
///
/// Of the prefixes only those are kept that begin with no other one: the rest can never decide. In
/// the sorted list of these, the only one that can begin a text is the last that is not greater.
class PrefixIndex {
 public:
  PrefixIndex() = default;

  /// `prefixes` are in lower case already, in any order, duplicates allowed.
  explicit PrefixIndex(std::vector<std::string> prefixes);

  /// Whether `text` begins with one of the prefixes. Its ASCII letters are read as lower case;
  /// other letters are to be in lower case already. Allocates nothing.
  bool beginsWithAny(std::string_view text) const noexcept;

 private:
  std::vector<std::string> prefixes_;
};

}  // namespace sentrel
