#include "device/simulated/RootBundles.h"

#include <algorithm>
#include <ranges>

#include "sentrel/platform/MainBundle.h"

namespace sentrel::simulated {
namespace {

using Dictionary = PropertyList::Dictionary;

constexpr const char* globalPreferencesFile =
    "/var/mobile/Library/Preferences/.GlobalPreferences.plist";
constexpr const char* homeScreenFolder = "/System/Library/CoreServices/SpringBoard.app";
constexpr const char* systemApplicationsFolder = "/Applications";
constexpr const char* userApplicationsFolder = "/var/containers/Bundle/Application";

std::string below(const std::string& folder, const std::string& name) {
  return folder + "/" + name;
}

}  // namespace

RootBundles::RootBundles(RootPropertyLists& files) : files_(files), language_(readLanguage()) {
  findIn(systemApplicationsFolder, /*isSystem=*/true);
  const std::string containers = userApplicationsFolder;
  for (const std::string& container : files_.foldersIn(containers))
    findIn(below(containers, container), /*isSystem=*/false);
}

Dictionary RootBundles::texts(const std::string& bundleIdentifier, const std::string& table) {
  const auto folder = folderOf(bundleIdentifier);
  return folder ? textsIn(*folder, table) : Dictionary();
}

std::string RootBundles::readLanguage() {
  const auto preferences = files_.read(globalPreferencesFile);
  if (!preferences) return "en";
  const auto languages = files_.texts(globalPreferencesFile, *preferences, "AppleLanguages");
  return languages.empty() ? "en" : languages.front();
}

// --- Bundles -------------------------------------------------------------------------------------

void RootBundles::findIn(const std::string& folder, bool isSystem) {
  for (const std::string& name : files_.foldersIn(folder))
    if (name.ends_with(".app")) add(below(folder, name), isSystem);
}

void RootBundles::add(const std::string& folder, bool isSystem) {
  const std::string file = folder + "/Info.plist";
  const auto info = files_.read(file, RootPropertyLists::Missing::isAFault);
  if (!info) return;
  const std::string* identifier = textUnder(*info, "CFBundleIdentifier");
  if (!identifier) return files_.complain(file, "it names no identifier");
  if (const auto other = folderOf(*identifier))
    return files_.complain(file, *identifier + " is " + *other + " already");
  const auto tags = files_.texts(file, *info, "SBAppTags");
  const bool isHidden = std::ranges::find(tags, "hidden") != tags.end();
  bundles_.push_back(
      {folder,
       {*identifier, displayName(folder, *info), isSystem, isHidden, iconFile(folder, *info)}});
}

std::optional<std::string> RootBundles::folderOf(const std::string& bundleIdentifier) const {
  if (bundleIdentifier == springBoardBundleIdentifier) return homeScreenFolder;
  for (const Bundle& bundle : bundles_)
    if (bundle.application.bundleIdentifier == bundleIdentifier) return bundle.folder;
  return std::nullopt;
}

// --- Texts ---------------------------------------------------------------------------------------

/// The folder of translations that serves best: of "de-DE" and "de" the first that is there.
std::optional<std::string> RootBundles::localization(const std::string& folder) const {
  std::string language = language_;
  for (;;) {
    const std::string translations = below(folder, language + ".lproj");
    if (files_.isFolder(translations)) return translations;
    const auto region = language.rfind('-');
    if (region == language.npos) return std::nullopt;
    language.erase(region);
  }
}

Dictionary RootBundles::textsIn(const std::string& folder, const std::string& table) {
  const auto translations = localization(folder);
  if (!translations) return {};
  return files_.read(*translations + "/" + table + ".strings").value_or(Dictionary());
}

std::optional<std::string> RootBundles::displayName(const std::string& folder,
                                                    const Dictionary& info) {
  const Dictionary translated = textsIn(folder, "InfoPlist");
  for (const Dictionary* names : {&translated, &info})
    for (const char* key : {"CFBundleDisplayName", "CFBundleName"})
      if (const std::string* name = textUnder(*names, key)) return *name;
  return std::nullopt;
}

// --- Icons ---------------------------------------------------------------------------------------

/// The finest of the pictures that are there: a bundle names the largest last.
std::optional<std::string> RootBundles::iconFile(const std::string& folder,
                                                 const Dictionary& info) {
  const Dictionary* icons = &info;
  if (const auto* all = find<Dictionary>(info, "CFBundleIcons"))
    if (const auto* primary = find<Dictionary>(*all, "CFBundlePrimaryIcon")) icons = primary;
  const auto names = files_.texts(below(folder, "Info.plist"), *icons, "CFBundleIconFiles");
  for (const std::string& name : names | std::views::reverse)
    for (const char* end : {"@3x.png", "@2x.png", ".png", ""})
      if (auto file = files_.hostFile(below(folder, name) + end)) return file;
  return std::nullopt;
}

}  // namespace sentrel::simulated
