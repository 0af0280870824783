#pragma once

#include "sentrel/Process.h"
#include "sentrel/bridge/BridgeState.h"

namespace sentrel {

/// The device as the current process sees it.
inline Platform& currentPlatform() {
  return Process::current().platform();
}

/// What the bridge keeps for the current process.
inline BridgeState& currentState() {
  return Process::current().bridgeState();
}

}  // namespace sentrel
