#include <algorithm>

#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel {

bool SNSettings::isCurrentlyConnectedToTrustedNetwork() const {
  // Without a trusted network the joined one does not matter, and an application need not ask.
  if (wifiNetworks_.empty() || wifiManager_.seesNoNetwork()) return false;
  return isTrusted(wifiManager_.currentNetWork());
}

bool SNSettings::isTrusted(const std::optional<PropertyList::Dictionary>& network) const {
  const auto* name = network ? find<std::string>(*network, "SSID") : nullptr;
  return name && hasWiFiNetwork(*name);
}

bool SNSettings::addToWiFiNetwork(std::string_view name) {
  wifiNetworks_.emplace_back(name);
  return updateSettingsWithNetworkData();
}

bool SNSettings::removeFromWiFiNetwork(std::string_view name) {
  std::erase(wifiNetworks_, PropertyList(name));
  return updateSettingsWithNetworkData();
}

bool SNSettings::updateSettingsWithNetworkData() {
  return updateSettingsData(settings_keys::trustedNetworks, wifiNetworks_,
                            /*postNotification=*/true);
}

bool SNSettings::hasWiFiNetwork(std::string_view name) const {
  return std::ranges::any_of(wifiNetworks_, [name](const PropertyList& network) {
    const auto* stored = network.as<std::string>();
    return stored && *stored == name;
  });
}

}  // namespace sentrel
