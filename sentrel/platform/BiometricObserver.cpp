#include "sentrel/platform/BiometricObserver.h"

namespace sentrel {

void BiometricObserver::biometricKitInterfaceHandleEvent(const std::shared_ptr<BiometricInterface>&,
                                                         BiometricEvent) {}

void BiometricObserver::biometricKitInterfaceObserveEvent(
    const std::shared_ptr<BiometricInterface>&, BiometricEvent) {}

void BiometricObserver::biometricEventMonitorHandleBiometricEvent(
    const std::shared_ptr<SBUIBiometricEventMonitor>&, BiometricEvent) {}

void BiometricObserver::operationFinishedWithReason(std::int64_t) {}
void BiometricObserver::operationStateChanged(std::int64_t) {}
void BiometricObserver::operationPresenceStateChanged(std::int64_t) {}
void BiometricObserver::operationFaceDetectStateChanged(std::int64_t) {}

}  // namespace sentrel
