#include <algorithm>
#include <ranges>

#include "device/simulated/SimulatedHomeScreen.h"
#include "programs/sentrelctl/Explain.h"
#include "programs/sentrelctl/Folders.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/FolderRecord.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {
namespace {

void explainAllFolders(Explanation& explanation, const SNSettings& settings) {
  explanation.step("all folders?", yesOrNo(settings.isAllFoldersProtected()) + ": " +
                                       std::string(settings_keys::allFoldersProtected));
}

// --- An application by its folder ----------------------------------------------------------------

/// Why the folder, as it is now, is none of the stored ones: `stored` is the last of these that
/// holds the application.
std::string whyNotStored(const PropertyList* stored, const PropertyList& folder) {
  if (!stored) return "the protected folders";
  if (!haveSameDisplayName(*stored, folder))
    return "the application's folder is stored by another name, " + nameOf(*stored);
  return nameOf(*stored) + " is stored with other applications than it holds now";
}

void explainSet(Explanation& explanation, const SNSettings& settings,
                const std::string& bundleIdentifier, const PropertyList& folder) {
  const auto protecting = settings.isFolderProtectedForApp(bundleIdentifier,
                                                           /*ignoreAllOther=*/true);
  const auto& records = settings.enabledFolders();
  if (protecting && std::ranges::find(records, *protecting) != records.end())
    return explanation.step("in the set?", "yes: the protected folders");
  const PropertyList* stored = nullptr;
  for (const PropertyList& record : records)
    if (holdsApplication(record, bundleIdentifier)) stored = &record;
  explanation.step("in the set?", "no: " + whyNotStored(stored, folder));
  explainAllFolders(explanation, settings);
  // A stored folder of the same name decides alone.
  if (settings.isAllFoldersProtected() && !protecting)
    explanation.step("same applications?", "no: as stored, the folder holds others");
}

// --- A folder itself -----------------------------------------------------------------------------

std::shared_ptr<simulated::SimulatedFolder> liveFolder(const PropertyList& record) {
  auto folder = std::make_shared<simulated::SimulatedFolder>("SBFolder", nameOf(record));
  for (const PropertyList& icon : *iconsOf(record)) {
    const std::string* identifier = bundleIdentifierOf(icon);
    const std::string* name = displayNameOf(icon);
    if (identifier && name) folder->add(simulated::makeIcon(*identifier, *name));
  }
  return folder;
}

}  // namespace

bool explainFolder(Explanation& explanation, const std::string& bundleIdentifier) {
  const SNSettings& settings = SNSettings::sharedSettings();
  const PropertyList record = requireFolderOf(bundleIdentifier);
  explanation.stepsOfActivity();
  const bool isCovered =
      SentrelController::sharedInstance().shouldIgnoreAuthentication(SessionItem::record(record));
  explanation.step("open session?",
                   isCovered ? "yes: one for everything"
                             : "no, or one for this folder, of which the home screen alone knows");
  explainAllFolders(explanation, settings);
  const bool isStored = settings.hasFolder(record, /*ignoreAllOther=*/true);
  explanation.step("in the set?", yesOrNo(isStored) + ": the protected folders");
  return !isCovered && settings.isFolderProtected(*liveFolder(record));
}

bool explainFolderOf(Explanation& explanation, const std::string& bundleIdentifier) {
  const SNSettings& settings = SNSettings::sharedSettings();
  explanation.stepsOfActivity();
  explanation.stepOfSession(bundleIdentifier);
  const auto folder = folderOf(bundleIdentifier);
  homeScreenAnswers() ? explanation.step("in a folder?", yesOrNo(folder.has_value()))
                      : explanation.stepUnknown("in a folder?");
  if (folder) explainSet(explanation, settings, bundleIdentifier, *folder);
  return settings.isFolderProtectedForApp(bundleIdentifier).has_value();
}

}  // namespace sentrel::sentrelctl
