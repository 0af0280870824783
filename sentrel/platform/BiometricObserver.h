#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

class BiometricInterface;
class SBUIBiometricEventMonitor;

/// The number by which the biometric service names an event. Unknown numbers may come.
using BiometricEvent = std::int64_t;

/// Whoever the biometric service tells of events: the delegate of an interface, an observer of the
/// resource or of the event monitor, the delegate of a presence detection. Each of them calls only
/// the operations of its own kind; an operation that is not overridden ignores what it is told.
/// Called on the main thread.
class SENTREL_API BiometricObserver {
 public:
  virtual ~BiometricObserver() = default;

  /// `interface` is null when the event came from another process.
  virtual void biometricKitInterfaceHandleEvent(
      const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event);
  virtual void biometricKitInterfaceObserveEvent(
      const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event);

  virtual void biometricEventMonitorHandleBiometricEvent(
      const std::shared_ptr<SBUIBiometricEventMonitor>& monitor, BiometricEvent event);

  virtual void operationFinishedWithReason(std::int64_t reason);
  virtual void operationStateChanged(std::int64_t state);
  virtual void operationPresenceStateChanged(std::int64_t state);
  virtual void operationFaceDetectStateChanged(std::int64_t state);

  /// How log lines name the object.
  virtual std::string description() const = 0;
};

}  // namespace sentrel
