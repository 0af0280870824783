#pragma once

#include <optional>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// The device's Wi-Fi, as far as this process can see it.
class SENTREL_API WiFi {
 public:
  virtual ~WiFi() = default;

  /// Whether this process holds the handles that the two questions below need.
  virtual bool hasManager() const = 0;
  virtual bool hasClient() const = 0;

  /// The networks that the device has joined before.
  virtual std::optional<PropertyList::Array> knownNetworks() const = 0;

  /// The joined network, its name under "SSID"; none when no network is joined.
  virtual std::optional<PropertyList::Dictionary> currentNetwork() const = 0;

  /// Whether this process holds the client and sees that no network is joined. Where networks are
  /// trusted, every protection question asks it before it asks for the network, so a radio that can
  /// tell without making a dictionary overrides it.
  virtual bool seesNoNetwork() const { return hasClient() && !currentNetwork(); }
};

}  // namespace sentrel
