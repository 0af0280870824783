#include <cstdio>

#include "programs/common/CommandLine.h"
#include "programs/common/HomeScreenProbe.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;
using programs::ProgramError;
using programs::UsageError;

ExitCode list(const PropertyList::Array& names) {
  for (const PropertyList& name : names)
    std::printf("%s\n", describe(name).c_str());
  return programs::exitDone;
}

ExitCode listTrusted(const Context& context) {
  readSettingsFile(context);
  return list(SNSettings::sharedSettings().wifiNetworks());
}

ExitCode listKnown() {
  programs::requireHomeScreen();
  const auto known = SNWiFiManager::sharedManager().knownNetworks();
  if (!known) throw ProgramError("the home screen cannot tell");
  return list(*known);
}

ExitCode showCurrent() {
  programs::requireHomeScreen();
  const auto network = SNWiFiManager::sharedManager().currentNetWork();
  const auto* name = network ? find<std::string>(*network, "SSID") : nullptr;
  if (!name) return programs::exitNo;
  std::printf("%s\n", name->c_str());
  return programs::exitDone;
}

ExitCode trust(const Context& context, const std::string& name) {
  requireListOrNone(context, settings_keys::trustedNetworks);
  requireWritten(SNSettings::sharedSettings().addToWiFiNetwork(name));
  return programs::exitDone;
}

ExitCode distrust(const Context& context, const std::string& name) {
  requireListOrNone(context, settings_keys::trustedNetworks);
  SNSettings& settings = SNSettings::sharedSettings();
  if (!settings.hasWiFiNetwork(name)) return programs::exitNo;
  requireWritten(settings.removeFromWiFiNetwork(name));
  return programs::exitDone;
}

ExitCode networks(const Context& context, const Arguments& arguments) {
  const std::string& what = arguments[0];
  const bool hasName = arguments.size() == 2;
  if (what == "trusted" && !hasName) return listTrusted(context);
  if (what == "known" && !hasName) return listKnown();
  if (what == "current" && !hasName) return showCurrent();
  if (what == "trust" && hasName) return trust(context, arguments[1]);
  if (what == "distrust" && hasName) return distrust(context, arguments[1]);
  throw UsageError("expected networks trusted|known|current, or networks trust|distrust NAME");
}

constexpr Command commands[] = {
    {"networks", "trusted|known|current", "lists networks", 1, 2, networks},
    {"networks", "trust|distrust NAME", "protection rests while a trusted network is joined", 1, 2,
     networks},
};

}  // namespace

CommandTable networkCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
