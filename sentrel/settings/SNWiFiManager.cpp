#include "sentrel/settings/SNWiFiManager.h"

#include "sentrel/bridge/Bridge.h"

namespace sentrel {

SNWiFiManager::SNWiFiManager(Bridge& bridge) : bridge_(bridge), platform_(bridge.platform()) {}

std::optional<PropertyList::Array> SNWiFiManager::knownNetworks() const {
  if (platform_.wifi->hasManager()) return platform_.wifi->knownNetworks();
  return bridge_.ask<messages::KnownNetworks>();
}

std::optional<PropertyList::Dictionary> SNWiFiManager::currentNetWork() const {
  if (platform_.wifi->hasClient()) return platform_.wifi->currentNetwork();
  return bridge_.ask<messages::CurrentNetwork>();
}

}  // namespace sentrel
