#include "device/simulated/DeviceRootReader.h"

#include <algorithm>

#include "device/simulated/HomeScreenLayout.h"

namespace sentrel::simulated {
namespace {

using Dictionary = PropertyList::Dictionary;

constexpr const char* systemVersionFile = "/System/Library/CoreServices/SystemVersion.plist";
constexpr const char* networksFile = "/var/preferences/SystemConfiguration/com.apple.wifi.plist";
constexpr const char* stateFile = "/var/run/sentrel/device.plist";

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

bool startsWithNumber(std::string_view text) {
  return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

}  // namespace

DeviceRootReader::DeviceRootReader(storage::DeviceRoot root)
    : files_(std::move(root)), bundles_(files_) {}

void DeviceRootReader::fill(SimulatedDevice& device) {
  fillSystem(device);
  fillState(device);
  for (const RootBundles::Bundle& bundle : bundles_.all())
    device.applications().install(bundle.application);
  layOutHomeScreen(files_, device.homeScreen());
  fillNetworks(device);
}

std::shared_ptr<SimulatedMainBundle> DeviceRootReader::mainBundle(
    const std::string& bundleIdentifier) {
  auto bundle = std::make_shared<SimulatedMainBundle>(bundleIdentifier);
  for (const auto& [key, text] : bundles_.texts(bundleIdentifier, "Localizable"))
    if (const auto* translation = text.as<std::string>()) bundle->translate(key, *translation);
  return bundle;
}

void DeviceRootReader::fillSystem(SimulatedDevice& device) {
  const auto system = files_.read(systemVersionFile);
  const PropertyList* version = system ? find(*system, "ProductVersion") : nullptr;
  if (!version) return;
  const auto* text = version->as<std::string>();
  if (text && startsWithNumber(*text))
    device.system().version = *text;
  else
    files_.complain(systemVersionFile,
                    "ProductVersion is no text that starts with a number: " + describe(*version));
}

void DeviceRootReader::fillState(SimulatedDevice& device) {
  const auto state = files_.read(stateFile);
  if (!state) return;
  if (const auto* model = files_.text(stateFile, *state, "Model")) device.system().model = *model;
  if (const auto* network = files_.text(stateFile, *state, "JoinedNetwork"))
    device.wifi().joined = *network;
  if (const auto* front = files_.text(stateFile, *state, "FrontApplication"))
    device.applications().setFront(*front);
  if (const auto* scenes = files_.number(stateFile, *state, "ConnectedScenes", "number"))
    device.system().connectedScenes =
        static_cast<std::size_t>(std::max<std::int64_t>(scenes->integerValue(), 0));
  for (const std::string& reason : files_.texts(stateFile, *state, "Assertions"))
    device.sensor().hold(/*mode=*/5, reason);
  for (const Flag& flag : flags)
    if (const auto* value = files_.number(stateFile, *state, flag.key, "YES or NO"))
      flag.set(device, value->boolValue());
}

void DeviceRootReader::fillNetworks(SimulatedDevice& device) {
  const auto networks = files_.read(networksFile);
  if (!networks) return;
  for (const PropertyList& network :
       files_.list(networksFile, *networks, "List of known networks")) {
    const auto* entries = network.as<Dictionary>();
    if (const std::string* name = entries ? textUnder(*entries, "SSID_STR") : nullptr)
      device.wifi().known.push_back(*name);
    else
      files_.complain(networksFile, describe(network) + " is no network with an SSID_STR");
  }
}

}  // namespace sentrel::simulated
