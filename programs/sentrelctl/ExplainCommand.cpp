#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

#include "programs/common/CommandLine.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;
using programs::UsageError;

/// One kind of item: how it is called here, whether it is configured, and whether it needs
/// authentication now.
struct Kind {
  std::string_view name;
  const char* list;
  bool (*isListed)(const SNSettings&, std::string_view item);
  bool (*isProtected)(const SNSettings&, std::string_view item);
};

constexpr Kind kinds[] = {
    {"app", "the protected applications",
     [](const SNSettings& s, std::string_view i) {
       return s.isAppProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isAppProtected(i); }},
    {"notifications", "the applications with protected notifications",
     [](const SNSettings& s, std::string_view i) {
       return s.isNotificationsAppProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isNotificationsAppProtected(i); }},
    {"pane", "the protected settings panes",
     [](const SNSettings& s, std::string_view i) {
       return s.isSpecifierProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isSpecifierProtected(i); }},
    {"switch", "the protected switches",
     [](const SNSettings& s, std::string_view i) {
       return s.isFlipSwitchProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isFlipSwitchProtected(i); }},
    {"control", "the protected control-centre items",
     [](const SNSettings& s, std::string_view i) {
       return s.isControlCenterItemProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isControlCenterItemProtected(i); }},
    {"service", "the protected applications, one of which it belongs to",
     [](const SNSettings& s, std::string_view i) {
       return s.isSystemServiceProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isSystemServiceProtected(i); }},
    {"folder-of", "the protected folders",
     [](const SNSettings& s, std::string_view i) {
       return s.isFolderProtectedForApp(i, /*ignoreAllOther=*/true).has_value();
     },
     [](const SNSettings& s, std::string_view i) {
       return s.isFolderProtectedForApp(i).has_value();
     }},
};

/// One of the phone's own features: the switch that protects it, the name under which its sessions
/// go (none: no session counts), and whether it needs authentication now.
struct Feature {
  std::string_view name;
  std::string_view key;
  std::string_view service;
  bool (SNSettings::*isProtected)() const;
};

constexpr Feature features[] = {
    {"arrangement", settings_keys::iconArrangement, "App Arrangement Protection",
     &SNSettings::isAppArrangementProtected},
    {"switcher", settings_keys::appSwitcher, "App Switcher Protection",
     &SNSettings::isAppSwitcherProtected},
    {"respring", settings_keys::respring, "Respring Protection", &SNSettings::isRespringProtected},
    {"reboot", settings_keys::reboot, "Reboot Protection", &SNSettings::isRebootProtected},
    {"photos", settings_keys::photosProtected, "Photos Protection", &SNSettings::isPhotosProtected},
    {"caller-id", settings_keys::callerIDOn, "", &SNSettings::isCallerIDProtected},
    {"caller-id-lock-screen", settings_keys::callerIDRemoveFromLockScreen, "",
     &SNSettings::isCallerIDProtectedRemoveFromLockScreen},
    {"caller-id-attention", settings_keys::callerIDHideOnAttentionAway, "",
     &SNSettings::isHideCallerInfoOnAttentionAway},
};

void step(const char* question, const std::string& answer) {
  std::printf("%-22s %s\n", question, answer.c_str());
}

void explainNetwork(const SNSettings& settings) {
  const auto network = SNWiFiManager::sharedManager().currentNetWork();
  const auto* name = network ? find<std::string>(*network, "SSID") : nullptr;
  if (!name) return step("trusted network?", "no: none is joined");
  const bool trusted = settings.hasWiFiNetwork(*name);
  step("trusted network?", (trusted ? "yes: " : "no: ") + *name);
}

/// The entry of a table that has the name; throws UsageError with all names there are.
template <class Table>
const auto& named(const Table& table, std::string_view name, const char* what) {
  std::string names;
  for (const auto& entry : table) {
    if (entry.name == name) return entry;
    names += " " + std::string(entry.name);
  }
  throw UsageError("unknown " + std::string(what) + " " + std::string(name) +
                   "; there are:" + names);
}

ExitCode conclude(bool isProtected) {
  step("so it is", isProtected ? "protected" : "not protected");
  return isProtected ? programs::exitDone : programs::exitNo;
}

void explainGate(const SNSettings& settings, std::string_view sessionItem) {
  step("enabled?", settings.isSentrelEnabled() ? "yes" : "no");
  explainNetwork(settings);
  if (sessionItem.empty()) return step("open session?", "does not count here");
  const bool covered = SentrelController::sharedInstance().shouldIgnoreAuthentication(sessionItem);
  step("open session?", covered ? "yes" : "no");
}

ExitCode explainFeature(const std::string& name) {
  const Feature& feature = named(features, name, "feature");
  const SNSettings& settings = SNSettings::sharedSettings();
  explainGate(settings, SNUtils::localizedString(feature.service));
  const auto flag = settings.valueForKey(feature.key);
  step("switched on?",
       std::string(flag && flag->boolValue() ? "yes: " : "no: ") + std::string(feature.key));
  return conclude((settings.*feature.isProtected)());
}

ExitCode explain(const Context& context, const Arguments& arguments) {
  const bool hasKind = arguments.size() == 2;
  const std::string& item = arguments.back();
  readSettingsFile(context);
  if (hasKind && arguments[0] == "feature") return explainFeature(item);
  const Kind& kind = named(kinds, hasKind ? arguments[0] : "app", "kind of item");
  const SNSettings& settings = SNSettings::sharedSettings();
  if (kind.name == "pane" && item == SNUtils::localizedString("Sentrel"))
    step("own pane?", "yes: always protected, whatever follows");
  explainGate(settings, item);
  if (kind.name == "switch")
    step("extension installed?", SNUtils::isFlipSwitchInstalled() ? "yes" : "no");
  step("in the set?", std::string(kind.isListed(settings, item) ? "yes: " : "no: ") + kind.list);
  return conclude(kind.isProtected(settings, item));
}

constexpr Command commands[] = {
    {"explain", "[KIND] ITEM", "tells step by step why an item is or is not protected now", 1, 2,
     explain},
};

}  // namespace

std::span<const Command> explainCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
