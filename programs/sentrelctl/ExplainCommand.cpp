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

const Kind& kindNamed(std::string_view name) {
  const auto kind = std::ranges::find(kinds, name, &Kind::name);
  if (kind != std::end(kinds)) return *kind;
  std::string names;
  for (const Kind& known : kinds)
    names += " " + std::string(known.name);
  throw UsageError("unknown kind of item " + std::string(name) + "; there are:" + names);
}

ExitCode explain(const Context& context, const Arguments& arguments) {
  const bool hasKind = arguments.size() == 2;
  const Kind& kind = kindNamed(hasKind ? arguments[0] : "app");
  const std::string& item = arguments.back();
  readSettingsFile(context);
  const SNSettings& settings = SNSettings::sharedSettings();
  if (kind.name == "pane" && item == SNUtils::localizedString("Sentrel"))
    step("own pane?", "yes: always protected, whatever follows");
  step("enabled?", settings.isSentrelEnabled() ? "yes" : "no");
  explainNetwork(settings);
  if (kind.name == "switch")
    step("extension installed?", SNUtils::isFlipSwitchInstalled() ? "yes" : "no");
  const bool covered = SentrelController::sharedInstance().shouldIgnoreAuthentication(item);
  step("open session?", covered ? "yes" : "no");
  step("in the set?", std::string(kind.isListed(settings, item) ? "yes" : "no") + ": " + kind.list);
  const bool isProtected = kind.isProtected(settings, item);
  step("so it is", isProtected ? "protected" : "not protected");
  return isProtected ? programs::exitDone : programs::exitNo;
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
