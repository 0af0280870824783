#pragma once

#include "device/simulated/SimulatedDevice.h"
#include "host/WatchResponder.h"

namespace sentrel::programs {

/// Answers watch queries with the signal of a simulated device's watch. The device outlives it.
inline host::WatchResponder watchResponder(simulated::SimulatedDevice& device) {
  return host::WatchResponder([&device] {
    return host::WatchResponder::Signal{device.watch().firstRSSI, device.watch().secondRSSI};
  });
}

}  // namespace sentrel::programs
