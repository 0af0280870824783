#include <algorithm>
#include <stdexcept>
#include <utility>

#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/FolderKeys.h"
#include "sentrel/settings/FolderRecord.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel {

std::int64_t SNSettings::matchedFolderDataIndex(const PropertyList& record) const {
  if (enabledFolders_.empty()) return -1;
  const FolderIcons icons(record);
  const auto match = std::ranges::find_if(enabledFolders_, [&](const PropertyList& stored) {
    return haveSameDisplayName(stored, record) && icons.holdAllOf(stored);
  });
  return match == enabledFolders_.end() ? -1 : match - enabledFolders_.begin();
}

void SNSettings::setEnabledFolders(PropertyList::Array records) {
  foldersToChange() = std::move(records);
}

PropertyList::Array& SNSettings::foldersToChange() {
  lastFolders_.reset();
  return enabledFolders_;
}

bool SNSettings::writeFolders() {
  return updateSettingsData(settings_keys::folders, enabledFolders_, /*postNotification=*/true);
}

bool SNSettings::addToFolders(PropertyList record) {
  bridge_.logMessage("Adding folders info to settings: %@", record);
  const std::int64_t index = matchedFolderDataIndex(record);
  bridge_.logMessage("Got counter as: %ld", index);
  if (index < 0)
    foldersToChange().push_back(std::move(record));
  else
    foldersToChange()[static_cast<std::size_t>(index)] = std::move(record);
  bridge_.logMessage("After adding self.enabledFolders: %@", enabledFolders_);
  return writeFolders();
}

bool SNSettings::removeFromFolders(const PropertyList& record) {
  bridge_.logMessage("Removing folders info to settings: %@", record);
  const std::int64_t index = matchedFolderDataIndex(record);
  if (index < 0) throw std::out_of_range("the folder to remove is not among the protected folders");
  PropertyList::Array& folders = foldersToChange();
  folders.erase(folders.begin() + index);
  return writeFolders();
}

bool SNSettings::updateFoldersData(const PropertyList& record, bool add,
                                   const std::optional<PropertyList>& newData) {
  const std::int64_t index = matchedFolderDataIndex(record);
  if (index < 0) return false;
  PropertyList folder = enabledFolders_[static_cast<std::size_t>(index)];
  bridge_.logMessage("Got folder data as: %@", folder);
  PropertyList::Array icons = *iconsOf(folder);
  bridge_.logMessage("allFoldersArray: %@", icons);
  if (newData && add) icons.push_back(*newData);
  if (newData && !add) std::erase(icons, *newData);
  folder.as<PropertyList::Dictionary>()->insert_or_assign(std::string(folder_keys::allIcons),
                                                          std::move(icons));
  return replaceFolder(index, std::move(folder));
}

bool SNSettings::updateFoldersData(const PropertyList& record, PropertyList newRecord) {
  const std::int64_t index = matchedFolderDataIndex(record);
  return index >= 0 && replaceFolder(index, std::move(newRecord));
}

bool SNSettings::replaceFolder(std::int64_t index, PropertyList newRecord) {
  foldersToChange()[static_cast<std::size_t>(index)] = std::move(newRecord);
  bridge_.logMessage("After updating: %@", enabledFolders_);
  return writeFolders();
}

bool SNSettings::resetAllFolders() {
  bridge_.logMessage("Resetting all folders....");
  foldersToChange().clear();
  return writeFolders();
}

bool SNSettings::hasFolder(const PropertyList& record, bool ignoreAllOther) const {
  if (!ignoreAllOther && !passesGate(SessionItem::record(record))) return false;
  return isUnknown_ || matchedFolderDataIndex(record) >= 0;
}

bool SNSettings::isFolderProtected(const SBFolder& folder, bool ignoreAllOther) const {
  if (!ignoreAllOther && !passesGate(SessionItem::object(&folder))) return false;
  if (isAllFoldersProtected()) return true;
  const PropertyList record(bridge_.folderRecord(folder));
  if (sessions_.shouldIgnoreAuthentication(SessionItem::record(record))) return false;
  return hasFolder(record);
}

std::optional<PropertyList> SNSettings::isFolderProtectedForApp(
    std::optional<std::string_view> bundleIdentifier, bool ignoreAllOther) const {
  if (!bundleIdentifier) return std::nullopt;
  if (!ignoreAllOther && !passesGate(*bundleIdentifier)) return std::nullopt;
  const std::string identifier(*bundleIdentifier);
  if (!bridge_.hasAnyParentFolder(identifier)) return std::nullopt;
  const auto parentData = bridge_.protectedFolderData(identifier);
  const auto* parent = parentData ? find(*parentData, folder_keys::allIcons) : nullptr;
  const PropertyList* candidate = lastFolderWith(identifier);
  if (candidate && parent && haveSameDisplayName(*candidate, *parent))
    return holdSameApplications(*candidate, *parent) ? std::optional(*candidate) : std::nullopt;
  if (!isAllFoldersProtected() || !parentData) return std::nullopt;
  return PropertyList(*parentData);
}

const PropertyList* SNSettings::lastFolderWith(std::string_view bundleIdentifier) const {
  if (!lastFolders_) lastFolders_ = lastRecordOfEachApplication(enabledFolders_);
  const auto last = lastFolders_->find(bundleIdentifier);
  return last == lastFolders_->end() ? nullptr : last->second;
}

}  // namespace sentrel
