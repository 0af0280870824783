#include "programs/common/CommandLine.h"
#include "programs/common/HomeScreenProbe.h"
#include "programs/common/SettingsValue.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/Printing.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;
using programs::ProgramError;
using programs::UsageError;

ExitCode tell(const Context& context, const PropertyList& names) {
  print(context, names);
  return programs::exitDone;
}

ExitCode listTrusted(const Context& context) {
  readSettingsFile(context);
  return tell(context, SNSettings::sharedSettings().wifiNetworks());
}

ExitCode listKnown(const Context& context) {
  programs::requireHomeScreen();
  const auto known = SNWiFiManager::sharedManager().knownNetworks();
  if (!known) throw ProgramError("the home screen cannot tell");
  return tell(context, *known);
}

ExitCode showCurrent(const Context& context) {
  programs::requireHomeScreen();
  const auto network = SNWiFiManager::sharedManager().currentNetWork();
  const auto* name = network ? find<std::string>(*network, "SSID") : nullptr;
  return name ? tell(context, *name) : programs::exitNo;
}

ExitCode trust(const Context& context, const std::string& name) {
  const SettingsChange change(context);
  requireListOrNone(context, settings_keys::trustedNetworks);
  requireWritten(SNSettings::sharedSettings().addToWiFiNetwork(programs::requireName(name)));
  return programs::exitDone;
}

ExitCode distrust(const Context& context, const std::string& name) {
  const SettingsChange change(context);
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
  if (what == "known" && !hasName) return listKnown(context);
  if (what == "current" && !hasName) return showCurrent(context);
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
