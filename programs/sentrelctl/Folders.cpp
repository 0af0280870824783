#include "programs/sentrelctl/Folders.h"

#include <algorithm>

#include "programs/common/CommandLine.h"
#include "programs/common/HomeScreenProbe.h"
#include "sentrel/bridge/FolderKeys.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/settings/FolderRecord.h"

namespace sentrel::sentrelctl {

std::optional<PropertyList> folderOf(const std::string& bundleIdentifier) {
  if (!SNUtils::hasAnyParentFolder(bundleIdentifier)) return std::nullopt;
  const auto data = SNUtils::protectedFolderData(bundleIdentifier);
  const PropertyList* record = data ? find(*data, folder_keys::allIcons) : nullptr;
  return record && iconsOf(*record) ? std::optional(*record) : std::nullopt;
}

PropertyList requireFolderOf(const std::string& bundleIdentifier) {
  if (auto record = folderOf(bundleIdentifier)) return *std::move(record);
  programs::requireHomeScreen();
  throw programs::ProgramError("the home screen knows of no folder that holds " + bundleIdentifier);
}

std::string nameOf(const PropertyList& record) {
  const std::string* name = displayNameOf(record);
  return name ? *name : "?";
}

bool holdsApplication(const PropertyList& record, std::string_view bundleIdentifier) {
  const auto* icons = iconsOf(record);
  return icons && std::ranges::any_of(*icons, [bundleIdentifier](const PropertyList& icon) {
           const std::string* identifier = bundleIdentifierOf(icon);
           return identifier && *identifier == bundleIdentifier;
         });
}

}  // namespace sentrel::sentrelctl
