#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sentrel/platform/BiometricObserver.h"
#include "sentrel/platform/Export.h"
#include "sentrel/platform/PlatformError.h"

namespace sentrel {

/// The sensor's watch for a face in front of the device. Main thread only, as everything here.
class SENTREL_API PresenceDetectOperation {
 public:
  virtual ~PresenceDetectOperation() = default;

  /// Not retained.
  virtual void setDelegate(const std::shared_ptr<BiometricObserver>& delegate) = 0;

  /// Whether it started; fills `error` where it did not.
  virtual bool startWithError(std::optional<PlatformError>& error) = 0;
  virtual void cancel() = 0;
};

class SENTREL_API BKDevice {
 public:
  virtual ~BKDevice() = default;

  /// Null where it cannot be made; fills `error` then.
  virtual std::shared_ptr<PresenceDetectOperation> createPresenceDetectOperationWithError(
      std::optional<PlatformError>& error) = 0;
};

/// The sensors of the device: each has a descriptor, from which it can be opened.
class SENTREL_API BKDeviceManager {
 public:
  virtual ~BKDeviceManager() = default;

  virtual std::vector<std::string> availableDevices() const = 0;

  /// Null where it cannot be opened; fills `error` then.
  virtual std::shared_ptr<BKDevice> deviceWithDescriptor(const std::string& descriptor,
                                                         std::optional<PlatformError>& error) = 0;
};

}  // namespace sentrel
