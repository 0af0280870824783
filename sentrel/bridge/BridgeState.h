#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "sentrel/platform/Platform.h"

namespace sentrel {

/// What the bridge keeps for the life of one process. Made once, which is when the sensor is first
/// looked at and the default message is chosen.
///
/// Main thread only, but for supportsFaceID: the flag only ever turns to YES, so nobody minds who
/// sets it first.
struct BridgeState {
  explicit BridgeState(Platform& platform);

  /// Never replaced.
  std::shared_ptr<LAContext> context;

  /// What a prompt says that asks for the sensor, localised; none for a sensor of an unknown kind.
  std::optional<std::string> defaultMessage;

  std::atomic<bool> supportsFaceID = false;
  std::shared_ptr<OperationQueue> operationQueue;

  bool isRequestingFromCC = false;
  bool isLockscreenAsDimmed = false;
  std::optional<std::string> currentAuthenticatedAppBundleId;

  /// The assertion that this process took last, home-screen process only.
  std::shared_ptr<BiometricMatchAssertion> matchAssertion;
  std::shared_ptr<PresenceDetectOperation> presenceDetectOperation;

  /// The logging library, once it was asked for: what it does, it does only while it is open.
  std::shared_ptr<DynamicLibrary> messageLog;

  /// The registrations for biometric events from another process, one an observer.
  std::map<const BiometricObserver*, Observation> distributedObservers;

 private:
  /// Each answers the text to choose, before it is localised.
  std::optional<std::string_view> lookAtContext(const Platform& platform);
  std::string_view lookAtInterface(const Platform& platform);
};

}  // namespace sentrel
