#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// Who the daemon is, and the service by which it is asked.
inline constexpr std::string_view sharingDaemonBundleIdentifier = "com.apple.sharingd";
inline constexpr std::string_view sharingDaemonServiceName = "com.apple.sharingd.nsxpc";

// The classes that only the system's sharing daemon has.

/// A device that is paired with this one.
struct PairedDevice {
  bool isDefaultPairedDevice = false;
  bool isNearby = false;
  bool isActive = false;
  bool isConnected = false;
  std::optional<std::string> name;
};

class SENTREL_API SDPairedDeviceAgent {
 public:
  virtual ~SDPairedDeviceAgent() = default;

  /// Runs `work` on the agent's own queue and waits for its end. From any other thread.
  virtual void dispatchSync(const std::function<void()>& work) = 0;

  /// Send a state to the watch; on the agent's queue. The newer one can wake it.
  virtual void _idsSendStateUpdateAsWaking(const PropertyList::Dictionary& state, bool waking) = 0;
  virtual void _idsSendStateUpdate(const PropertyList::Dictionary& state) = 0;

  /// The devices of its "_idsService".
  virtual std::vector<PairedDevice> devices() const = 0;
};

class SENTREL_API SDStatusMonitor {
 public:
  virtual ~SDStatusMonitor() = default;

  virtual std::int64_t pairedWatchWristState() const = 0;
  virtual std::int32_t pairedWatchLockState() const = 0;
};

}  // namespace sentrel
