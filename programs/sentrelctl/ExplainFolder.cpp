#include <algorithm>

#include "programs/sentrelctl/Explain.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {
namespace {

void explainSet(const SNSettings& settings, const std::string& bundleIdentifier) {
  const auto folder = settings.isFolderProtectedForApp(bundleIdentifier, /*ignoreAllOther=*/true);
  const auto& stored = settings.enabledFolders();
  const bool isStored = folder && std::ranges::find(stored, *folder) != stored.end();
  step("in the set?", yesOrNo(isStored) + ": the protected folders");
  if (isStored) return;
  const std::string key(settings_keys::allFoldersProtected);
  const bool areAll = settings.isAllFoldersProtected();
  step("all folders?", yesOrNo(areAll) + ": " + key);
  // A stored folder of the same name decides alone.
  if (areAll && !folder) step("same applications?", "no: as stored, the folder holds others");
}

}  // namespace

programs::ExitCode explainFolderOf(const std::string& bundleIdentifier) {
  const SNSettings& settings = SNSettings::sharedSettings();
  explainActivity();
  explainSession(bundleIdentifier);
  const bool liesInFolder = SNUtils::hasAnyParentFolder(bundleIdentifier) &&
                            SNUtils::protectedFolderData(bundleIdentifier);
  step("in a folder?", yesOrNo(liesInFolder));
  if (liesInFolder) explainSet(settings, bundleIdentifier);
  return conclude(settings.isFolderProtectedForApp(bundleIdentifier).has_value());
}

}  // namespace sentrel::sentrelctl
