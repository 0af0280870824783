#pragma once

namespace sentrel {

/// The user's choices that the bridge depends on. The settings above it own them; the bridge, which
/// they are built on, sees no more than this.
class BridgeSettings {
 public:
  /// Asked for every log line, also for those of the settings' own making.
  virtual bool isLoggingEnabled() const = 0;

  /// Whether the sensor is not to be used: that was chosen, and there is a passcode instead.
  virtual bool shouldUsePasscodeOnly() const = 0;

 protected:
  ~BridgeSettings() = default;
};

}  // namespace sentrel
