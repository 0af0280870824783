#pragma once

namespace sentrel {

/// The user's choices that the bridge depends on. The settings own them and implement this.
class BridgeSettings {
 public:
  virtual bool isLoggingEnabled() const = 0;

  /// Whether the sensor is not to be used: that was chosen, and there is a passcode instead.
  virtual bool shouldUsePasscodeOnly() const = 0;

 protected:
  ~BridgeSettings() = default;
};

}  // namespace sentrel
