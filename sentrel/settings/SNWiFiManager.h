#pragma once

#include <optional>

#include "sentrel/platform/Platform.h"

namespace sentrel {

class Bridge;

/// The Wi-Fi networks, those that the device remembers and the one it is on. A process without a
/// view of them asks the home screen.
class SENTREL_API SNWiFiManager {
 public:
  /// `bridge` outlives the manager.
  explicit SNWiFiManager(Bridge& bridge);

  /// The current process's manager.
  static SNWiFiManager& sharedManager();

  std::optional<PropertyList::Array> knownNetworks() const;

  /// Holds at least "SSID"; none when no network is joined.
  std::optional<PropertyList::Dictionary> currentNetWork() const;

  /// Whether this process sees by itself that no network is joined.
  bool seesNoNetwork() const { return platform_.wifi->seesNoNetwork(); }

 private:
  Bridge& bridge_;
  Platform& platform_;
};

}  // namespace sentrel
