#include "device/simulated/DeviceRootReader.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "device/storage/PlistFiles.h"

namespace sentrel::simulated {
namespace {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

constexpr const char* systemVersionFile = "/System/Library/CoreServices/SystemVersion.plist";
constexpr const char* globalPreferencesFile =
    "/var/mobile/Library/Preferences/.GlobalPreferences.plist";
constexpr const char* iconStateFile = "/var/mobile/Library/SpringBoard/IconState.plist";
constexpr const char* networksFile = "/var/preferences/SystemConfiguration/com.apple.wifi.plist";
constexpr const char* stateFile = "/var/run/sentrel/device.plist";

constexpr const char* homeScreenFolder = "/System/Library/CoreServices/SpringBoard.app";
constexpr const char* systemApplicationsFolder = "/Applications";
constexpr const char* userApplicationsFolder = "/var/containers/Bundle/Application";

const std::string* textUnder(const Dictionary& entries, std::string_view key) {
  const auto* text = find<std::string>(entries, key);
  return text && !text->empty() ? text : nullptr;
}

/// A yes or no about the hardware, and what it sets.
struct Flag {
  std::string_view key;
  void (*set)(SimulatedDevice& device, bool value);
};

constexpr Flag flags[] = {
    {"Locked", [](SimulatedDevice& d, bool value) { d.lock().setLocked(value); }},
    {"PasscodeSet", [](SimulatedDevice& d, bool value) { d.lock().setPasscodeSet(value); }},
    {"TouchID", [](SimulatedDevice& d, bool value) { d.sensor().isTouchIDCapable = value; }},
    {"FaceID", [](SimulatedDevice& d, bool value) { d.sensor().isPearlIDCapable = value; }},
    {"Enrolled", [](SimulatedDevice& d, bool value) { d.sensor().isEnrolled = value; }},
    {"BiometricUnlock", [](SimulatedDevice& d, bool value) { d.sensor().isUnlockEnabled = value; }},
    {"FingerOn", [](SimulatedDevice& d, bool value) { d.sensor().isFingerOn = value; }},
    {"LegacyAlerts", [](SimulatedDevice& d, bool value) { d.system().canUseAlertView = value; }},
    {"DarkMode",
     [](SimulatedDevice& d, bool value) {
       d.screen().setUserInterfaceStyle(value ? UIUserInterfaceStyle::dark
                                              : UIUserInterfaceStyle::light);
     }},
    {"Tablet",
     [](SimulatedDevice& d, bool value) {
       d.screen().setUserInterfaceIdiom(value ? UIUserInterfaceIdiom::pad
                                              : UIUserInterfaceIdiom::phone);
     }},
};

bool isHidden(const Dictionary& info) {
  const auto* tags = find<Array>(info, "SBAppTags");
  return tags && std::ranges::find(*tags, PropertyList("hidden")) != tags->end();
}

/// The folders in `folder` in the order of their names, so that every run sees the same device.
std::vector<std::string> foldersIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error))
    if (entry->is_directory(error)) names.push_back(entry->path().filename().string());
  std::ranges::sort(names);
  return names;
}

}  // namespace

DeviceRootReader::DeviceRootReader(storage::DeviceRoot root)
    : root_(std::move(root)), files_(std::make_unique<storage::PlistFiles>(root_)) {}

void DeviceRootReader::fill(SimulatedDevice& device) {
  fillSystem(device);
  fillState(device);
  fillApplications(device);
  fillHomeScreen(device);
  fillNetworks(device);
}

/// The dictionary in a file; none, with a complaint, where something is there that is none.
std::optional<Dictionary> DeviceRootReader::read(const std::string& path) {
  const auto reading = storage::readDictionaryFile(root_.hostPath(path).value_or(""));
  if (const auto* dictionary = std::get_if<Dictionary>(&reading)) return *dictionary;
  const auto& fault = std::get<storage::PropertyListFault>(reading);
  if (fault.kind != storage::PropertyListFault::Kind::missing)
    complaints_.push_back(path + ": " + storage::describe(fault));
  return std::nullopt;
}

// --- Bundles -------------------------------------------------------------------------------------

std::vector<DeviceRootReader::Bundle> DeviceRootReader::findBundles() {
  std::vector<Bundle> bundles;
  findBundlesIn(systemApplicationsFolder, /*isSystem=*/true, bundles);
  const std::string containers = userApplicationsFolder;
  for (const std::string& container : foldersIn(root_.hostPath(containers).value_or("")))
    findBundlesIn(containers + "/" + container, /*isSystem=*/false, bundles);
  return bundles;
}

void DeviceRootReader::findBundlesIn(const std::string& folder, bool isSystem,
                                     std::vector<Bundle>& bundles) {
  for (const std::string& name : foldersIn(root_.hostPath(folder).value_or(""))) {
    if (!name.ends_with(".app")) continue;
    const std::string bundleFolder = folder + "/" + name;
    auto info = read(bundleFolder + "/Info.plist");
    if (info && textUnder(*info, "CFBundleIdentifier"))
      bundles.push_back({bundleFolder, std::move(*info), isSystem});
    else
      complaints_.push_back(bundleFolder + ": no application: Info.plist names no identifier");
  }
}

std::string DeviceRootReader::language() {
  const auto preferences = files_->readDictionary(globalPreferencesFile);
  const auto* languages = preferences ? find<Array>(*preferences, "AppleLanguages") : nullptr;
  const auto* first =
      languages && !languages->empty() ? languages->front().as<std::string>() : nullptr;
  return first ? *first : "en";
}

Dictionary DeviceRootReader::texts(const std::string& bundleFolder, const std::string& table) {
  return read(bundleFolder + "/" + language() + ".lproj/" + table + ".strings")
      .value_or(Dictionary());
}

std::optional<std::string> DeviceRootReader::displayName(const Bundle& bundle) {
  const Dictionary translated = texts(bundle.folder, "InfoPlist");
  for (const Dictionary* names : {&translated, &bundle.info})
    for (const char* key : {"CFBundleDisplayName", "CFBundleName"})
      if (const std::string* name = textUnder(*names, key)) return *name;
  return std::nullopt;
}

std::shared_ptr<SimulatedMainBundle> DeviceRootReader::mainBundle(
    const std::string& bundleIdentifier) {
  auto bundle = std::make_shared<SimulatedMainBundle>(bundleIdentifier);
  std::string folder = bundleIdentifier == springBoardBundleIdentifier ? homeScreenFolder : "";
  for (const Bundle& installed : findBundles())
    if (*textUnder(installed.info, "CFBundleIdentifier") == bundleIdentifier)
      folder = installed.folder;
  if (folder.empty()) return bundle;
  for (const auto& [key, text] : texts(folder, "Localizable"))
    if (const auto* translation = text.as<std::string>()) bundle->translate(key, *translation);
  return bundle;
}

// --- Device --------------------------------------------------------------------------------------

void DeviceRootReader::fillSystem(SimulatedDevice& device) {
  const auto system = read(systemVersionFile);
  if (!system) return;
  if (const std::string* version = textUnder(*system, "ProductVersion"))
    device.system().version = *version;
}

void DeviceRootReader::fillState(SimulatedDevice& device) {
  const auto state = read(stateFile);
  if (!state) return;
  if (const std::string* model = textUnder(*state, "Model")) device.system().model = *model;
  if (const std::string* network = textUnder(*state, "JoinedNetwork"))
    device.wifi().joined = *network;
  if (const std::string* front = textUnder(*state, "FrontApplication"))
    device.applications().setFront(*front);
  if (const PropertyList* scenes = find(*state, "ConnectedScenes"))
    device.system().connectedScenes =
        static_cast<std::size_t>(std::max<std::int64_t>(scenes->integerValue(), 0));
  if (const auto* reasons = find<Array>(*state, "Assertions"))
    for (const PropertyList& reason : *reasons)
      if (const auto* text = reason.as<std::string>()) device.sensor().hold(/*mode=*/5, *text);
  for (const Flag& flag : flags)
    if (const PropertyList* value = find(*state, flag.key)) flag.set(device, value->boolValue());
}

void DeviceRootReader::fillApplications(SimulatedDevice& device) {
  for (const Bundle& bundle : findBundles())
    device.applications().install({*textUnder(bundle.info, "CFBundleIdentifier"),
                                   displayName(bundle), bundle.isSystem, isHidden(bundle.info)});
}

void DeviceRootReader::fillHomeScreen(SimulatedDevice& device) {
  const auto state = read(iconStateFile);
  if (!state) return;
  Array items;
  const auto append = [&items](const Array* more) {
    if (more) items.insert(items.end(), more->begin(), more->end());
  };
  append(find<Array>(*state, "buttonBar"));
  if (const auto* pages = find<Array>(*state, "iconLists"))
    for (const PropertyList& page : *pages)
      append(page.as<Array>());
  device.homeScreen().clear();
  for (const PropertyList& item : items)
    place(device.homeScreen(), item);
}

/// An application is a text, a folder a dictionary with a name and pages of applications.
void DeviceRootReader::place(SimulatedHomeScreen& homeScreen, const PropertyList& item) {
  if (const auto* identifier = item.as<std::string>())
    return homeScreen.addApplication(*identifier);
  const auto* folder = item.as<Dictionary>();
  const auto* pages = folder ? find<Array>(*folder, "iconLists") : nullptr;
  if (!pages) {
    complaints_.push_back(std::string(iconStateFile) + ": " + describe(item) +
                          " is neither an application nor a folder");
    return;
  }
  std::vector<std::string> identifiers;
  for (const PropertyList& page : *pages)
    if (const auto* icons = page.as<Array>())
      for (const PropertyList& icon : *icons)
        if (const auto* identifier = icon.as<std::string>()) identifiers.push_back(*identifier);
  const std::string* name = textUnder(*folder, "displayName");
  homeScreen.addFolder(name ? std::optional(*name) : std::nullopt, identifiers);
}

void DeviceRootReader::fillNetworks(SimulatedDevice& device) {
  const auto networks = read(networksFile);
  const auto* known = networks ? find<Array>(*networks, "List of known networks") : nullptr;
  if (!known) return;
  for (const PropertyList& network : *known)
    if (const auto* entries = network.as<Dictionary>())
      if (const std::string* name = textUnder(*entries, "SSID_STR"))
        device.wifi().known.push_back(*name);
}

}  // namespace sentrel::simulated
