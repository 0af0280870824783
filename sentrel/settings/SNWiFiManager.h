#pragma once

#include <optional>

#include "sentrel/platform/Platform.h"

namespace sentrel {

class Bridge;

/// Which Wi-Fi networks are known and which one is joined, in any process: a process that cannot
/// see the Wi-Fi state asks the home-screen process.
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
