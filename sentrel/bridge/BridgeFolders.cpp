#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/FolderKeys.h"
#include "sentrel/platform/Answer.h"

namespace sentrel {
namespace {

using Dictionary = PropertyList::Dictionary;

std::optional<std::string> describe(const std::shared_ptr<SBFolder>& folder) {
  if (!folder) return std::nullopt;
  return formatText("<%@: %@>", {folder->className(), folder->displayName()});
}

bool isRootFolder(const std::shared_ptr<SBFolder>& folder) {
  return folder && folder->className() == rootFolderClassName;
}

/// The home screen's folders, in order; none where it does not show its own root folder.
std::vector<std::shared_ptr<SBFolder>> foldersOfHomeScreen(const SBIconController& controller) {
  const auto root = controller.rootFolder ? controller.rootFolder() : nullptr;
  if (!isRootFolder(root) || !root->folderIcons) return {};
  std::vector<std::shared_ptr<SBFolder>> folders;
  for (const auto& icon : root->folderIcons())
    if (auto folder = icon->folder()) folders.push_back(std::move(folder));
  return folders;
}

SBIcons iconsOf(const SBFolder& folder) {
  return folder.allIcons ? folder.allIcons() : SBIcons();
}

/// A name and the identifier of what it names, as folder records hold them.
Dictionary iconRecord(const std::string& name, const SBIcon& icon) {
  Dictionary record;
  record.emplace(folder_keys::displayName, name);
  record.emplace(folder_keys::bundleIdentifier, icon.leafIdentifier().value_or(""));
  return record;
}

}  // namespace

std::optional<Dictionary> Bridge::folderData(const SBIcon& icon, const SBFolder& folder,
                                             const std::string& bundleIdentifier) {
  const auto name = displayName(icon);
  if (!name) return std::nullopt;
  Dictionary data = iconRecord(*name, icon);
  data.emplace(folder_keys::allIcons, folderRecord(folder));
  logMessage("isFolderProtected (%@) -> iconsData: %@", bundleIdentifier, data);
  return data;
}

bool Bridge::hasAnyParentFolder(const std::string& bundleIdentifier) {
  if (bundleIdentifier.empty()) return false;
  const auto& controller = platform_.iconController;
  if (!controller) return ask<messages::HasParentFolder>(*this, bundleIdentifier);
  const auto icon =
      answer(controller, &SBIconController::expectedIconForDisplayIdentifier, bundleIdentifier)
          .orElse(nullptr);
  if (!icon || !icon->parent) {
    logMessage("'SBIcon' does not responds to selector 'parent'");
    return true;
  }
  const auto parent = icon->parent();
  const auto folder = parent ? parent->folder() : nullptr;
  const bool hasFolder = !isRootFolder(folder);
  logMessage(
      hasFolder ? "App '%@' has a parent folder: %@" : "App '%@' does not have any folder: %@",
      bundleIdentifier, [&folder] { return describe(folder); });
  return hasFolder;
}

std::optional<Dictionary> Bridge::protectedFolderData(const std::string& bundleIdentifier) {
  if (bundleIdentifier.empty()) return std::nullopt;
  const auto& controller = platform_.iconController;
  if (!controller) return ask<messages::ParentFolderProtected>(*this, bundleIdentifier);
  for (const auto& folder : foldersOfHomeScreen(*controller))
    for (const auto& icon : iconsOf(*folder))
      if (icon->leafIdentifier() == bundleIdentifier)
        return folderData(*icon, *folder, bundleIdentifier);
  return std::nullopt;
}

PropertyList::Array Bridge::allIconsAsDictionary(const SBIcons& icons) {
  PropertyList::Array records;
  for (const auto& icon : icons)
    if (const auto name = displayName(*icon)) records.emplace_back(iconRecord(*name, *icon));
  return records;
}

Dictionary Bridge::folderRecord(const SBFolder& folder) {
  Dictionary record;
  record.emplace(folder_keys::displayName, folder.displayName().value_or(""));
  record.emplace(folder_keys::allIcons, allIconsAsDictionary(iconsOf(folder)));
  return record;
}

}  // namespace sentrel
