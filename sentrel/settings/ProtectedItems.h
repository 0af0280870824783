#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// One set of protected items, as the settings file lists them: duplicates collapse. Elements of
/// the file's array that are no strings protect nothing, but they are kept and written back: they
/// are not ours to lose.
///
/// Looking an item up is part of nearly every answer that the library gives, so it reads a table
/// with at least two places for each member: mostly one step, and no chain to follow.
class SENTREL_API ProtectedItems {
 public:
  ProtectedItems() = default;

  /// From the value under the set's key; anything but an array gives an empty set.
  explicit ProtectedItems(const PropertyList* array);

  bool contains(std::string_view item) const noexcept;
  void add(std::string_view item);
  void remove(std::string_view item);

  /// The set as the file holds it.
  PropertyList::Array asArray() const;

  auto begin() const noexcept { return members_.begin(); }
  auto end() const noexcept { return members_.end(); }
  std::size_t size() const noexcept { return members_.size(); }

 private:
  /// A free place has number 0, any other place the member's index plus 1.
  struct Place {
    std::uint32_t hash;
    std::uint32_t number;
  };

  void enter(std::size_t index);
  void rebuildTable();

  std::vector<std::string> members_;
  std::vector<Place> table_;
  PropertyList::Array others_;
};

}  // namespace sentrel
