#include "sentrel/settings/FolderRecord.h"

#include <algorithm>
#include <optional>

#include "sentrel/bridge/FolderKeys.h"

namespace sentrel {
namespace {

template <class T>
const T* entryOf(const PropertyList& value, std::string_view key) noexcept {
  const auto* entries = value.as<PropertyList::Dictionary>();
  return entries ? find<T>(*entries, key) : nullptr;
}

/// None for a record in which an icon has no identifier.
std::optional<std::set<std::string_view>> applicationsOf(const PropertyList& record) {
  const auto* icons = iconsOf(record);
  if (!icons) return std::nullopt;
  std::set<std::string_view> identifiers;
  for (const PropertyList& icon : *icons) {
    const auto* identifier = bundleIdentifierOf(icon);
    if (!identifier) return std::nullopt;
    identifiers.insert(*identifier);
  }
  return identifiers;
}

}  // namespace

const std::string* displayNameOf(const PropertyList& entry) noexcept {
  return entryOf<std::string>(entry, folder_keys::displayName);
}

const std::string* bundleIdentifierOf(const PropertyList& icon) noexcept {
  return entryOf<std::string>(icon, folder_keys::bundleIdentifier);
}

const PropertyList::Array* iconsOf(const PropertyList& record) noexcept {
  return entryOf<PropertyList::Array>(record, folder_keys::allIcons);
}

bool haveSameDisplayName(const PropertyList& a, const PropertyList& b) noexcept {
  const auto* nameOfA = displayNameOf(a);
  const auto* nameOfB = displayNameOf(b);
  return nameOfA && nameOfB && *nameOfA == *nameOfB;
}

RecordsByApplication lastRecordOfEachApplication(const PropertyList::Array& records) {
  RecordsByApplication last;
  for (const PropertyList& record : records)
    if (const auto* icons = iconsOf(record))
      for (const PropertyList& icon : *icons)
        if (const auto* identifier = bundleIdentifierOf(icon)) last[*identifier] = &record;
  return last;
}

bool holdSameApplications(const PropertyList& a, const PropertyList& b) {
  const auto applications = applicationsOf(a);
  return applications && applications == applicationsOf(b);
}

FolderIcons::FolderIcons(const PropertyList& record) {
  const auto* icons = iconsOf(record);
  if (!icons) return;
  icons_.reserve(icons->size());
  for (const PropertyList& icon : *icons) {
    const auto* name = displayNameOf(icon);
    const auto* identifier = bundleIdentifierOf(icon);
    if (name && identifier) icons_.emplace(*name, *identifier);
  }
}

bool FolderIcons::holdAllOf(const PropertyList& stored) const {
  const auto* icons = iconsOf(stored);
  return icons && std::ranges::all_of(*icons, [this](const PropertyList& icon) {
           const auto* name = displayNameOf(icon);
           const auto* identifier = bundleIdentifierOf(icon);
           return name && identifier && icons_.contains({*name, *identifier});
         });
}

std::size_t FolderIcons::IconHash::operator()(const Icon& icon) const {
  const std::hash<std::string_view> hash;
  return hash(icon.first) * 31 + hash(icon.second);
}

}  // namespace sentrel
