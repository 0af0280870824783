#include "sentrel/settings/SNWiFiManager.h"

#include "sentrel/bridge/Ask.h"

namespace sentrel {

SNWiFiManager::SNWiFiManager(Bridge& bridge) : bridge_(bridge), platform_(bridge.platform()) {}

std::optional<PropertyList::Array> SNWiFiManager::knownNetworks() const {
  if (platform_.wifi->hasManager()) return platform_.wifi->knownNetworks();
  return ask<messages::KnownNetworks>(bridge_);
}

std::optional<PropertyList::Dictionary> SNWiFiManager::currentNetWork() const {
  if (platform_.wifi->hasClient()) return platform_.wifi->currentNetwork();
  return ask<messages::CurrentNetwork>(bridge_);
}

}  // namespace sentrel
