#pragma once

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

// Reading folder records and the icons in them. They come from the settings file and from other
// processes: an entry that is missing or of a wrong type reads as null, which is equal to nothing.

/// The display name of a record or of an icon.
SENTREL_API const std::string* displayNameOf(const PropertyList& entry) noexcept;

SENTREL_API const std::string* bundleIdentifierOf(const PropertyList& icon) noexcept;

SENTREL_API const PropertyList::Array* iconsOf(const PropertyList& record) noexcept;

SENTREL_API bool haveSameDisplayName(const PropertyList& a, const PropertyList& b) noexcept;

/// For each application the last of the records that hold it. Lives no longer than the records.
using RecordsByApplication = std::unordered_map<std::string_view, const PropertyList*>;
RecordsByApplication lastRecordOfEachApplication(const PropertyList::Array& records);

/// Whether the two records hold the same applications, in any order and number. Never for a record
/// in which an identifier is missing.
bool holdSameApplications(const PropertyList& a, const PropertyList& b);

/// The icons of one record, for looking up those of many others in it. Lives no longer than the
/// record.
class FolderIcons {
 public:
  explicit FolderIcons(const PropertyList& record);

  /// Whether every icon of `stored` is here, by display name and bundle identifier. Always for a
  /// record with no icons, never for one without a list of them.
  bool holdAllOf(const PropertyList& stored) const;

 private:
  using Icon = std::pair<std::string_view, std::string_view>;
  struct IconHash {
    std::size_t operator()(const Icon& icon) const;
  };

  std::unordered_set<Icon, IconHash> icons_;
};

}  // namespace sentrel
