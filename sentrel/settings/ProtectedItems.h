#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// One set of protected items, as the settings file lists them. The order is not kept and
/// duplicates collapse. Elements of the file's array that are no strings protect nothing, but they
/// are kept and written back: they are not ours to lose.
class SENTREL_API ProtectedItems {
 public:
  ProtectedItems() = default;

  /// From the value under the set's key; anything but an array gives an empty set.
  explicit ProtectedItems(const PropertyList* array);

  bool contains(std::string_view item) const { return members_.contains(item); }
  void add(std::string_view item) { members_.emplace(item); }
  void remove(std::string_view item);

  /// The set as the file holds it.
  PropertyList::Array asArray() const;

  auto begin() const noexcept { return members_.begin(); }
  auto end() const noexcept { return members_.end(); }
  std::size_t size() const noexcept { return members_.size(); }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept {
      return std::hash<std::string_view>()(text);
    }
  };

  std::unordered_set<std::string, Hash, std::equal_to<>> members_;
  PropertyList::Array others_;
};

}  // namespace sentrel
