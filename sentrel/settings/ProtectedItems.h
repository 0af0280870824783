#pragma once

#include <string_view>

#include "sentrel/platform/PropertyList.h"
#include "sentrel/settings/TextTable.h"

namespace sentrel {

/// One set of protected items, as the settings file lists them: duplicates collapse. Elements of
/// the file's array that are no strings protect nothing, but they are kept and written back: they
/// are not ours to lose.
class SENTREL_API ProtectedItems {
 public:
  ProtectedItems() = default;

  /// From the list under the set's key.
  explicit ProtectedItems(PropertyList::Array elements);

  bool contains(std::string_view item) const noexcept { return members_.find(item).has_value(); }
  void add(std::string_view item) { members_.add(item); }
  void remove(std::string_view item) { members_.remove(item); }

  /// The set as the file holds it.
  PropertyList::Array asArray() const;

  auto begin() const noexcept { return members_.begin(); }
  auto end() const noexcept { return members_.end(); }
  std::size_t size() const noexcept { return members_.size(); }

 private:
  TextTable members_;
  PropertyList::Array others_;
};

}  // namespace sentrel
