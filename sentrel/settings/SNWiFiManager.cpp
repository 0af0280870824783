#include "sentrel/settings/SNWiFiManager.h"

#include "sentrel/Process.h"
#include "sentrel/bridge/Ask.h"

namespace sentrel {

SNWiFiManager& SNWiFiManager::sharedManager() {
  return Process::current().wifiManager();
}

std::optional<PropertyList::Array> SNWiFiManager::knownNetworks() const {
  if (platform_.wifi->hasManager()) return platform_.wifi->knownNetworks();
  return ask<messages::KnownNetworks>();
}

std::optional<PropertyList::Dictionary> SNWiFiManager::currentNetWork() const {
  if (platform_.wifi->hasClient()) return platform_.wifi->currentNetwork();
  return ask<messages::CurrentNetwork>();
}

}  // namespace sentrel
