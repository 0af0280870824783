#include <algorithm>

#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel {

bool SNSettings::passesGate(const SessionItem& item) const {
  if (!isSentrelEnabled()) return false;
  if (isCurrentlyConnectedToTrustedNetwork()) return false;
  return !sessions_.shouldIgnoreAuthentication(item);
}

bool SNSettings::isAppProtected() const {
  return isAppProtected(platform_.mainBundle->bundleIdentifier());
}

bool SNSettings::isAppProtected(std::string_view bundleIdentifier, bool ignoreAllOther) const {
  if (!ignoreAllOther && !passesGate(bundleIdentifier)) return false;
  return protectedApplications_.contains(bundleIdentifier);
}

bool SNSettings::isCurrentlyConnectedToTrustedNetwork() const {
  const auto network = SNWiFiManager::sharedManager().currentNetWork();
  const auto* name = network ? find<std::string>(*network, "SSID") : nullptr;
  return name && hasWiFiNetwork(*name);
}

bool SNSettings::hasWiFiNetwork(std::string_view name) const {
  return std::ranges::any_of(wifiNetworks_, [name](const PropertyList& network) {
    const auto* stored = network.as<std::string>();
    return stored && *stored == name;
  });
}

}  // namespace sentrel
