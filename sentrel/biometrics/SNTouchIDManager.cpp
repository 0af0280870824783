#include "sentrel/biometrics/SNTouchIDManager.h"

#include <algorithm>
#include <string_view>

#include "sentrel/biometrics/CallIfSet.h"
#include "sentrel/bridge/Bridge.h"

namespace sentrel {
namespace {

constexpr std::string_view biometricKitPath =
    "/System/Library/PrivateFrameworks/BiometricKit.framework";

/// Newer systems report it between the events that count.
constexpr BiometricEvent ignorableEvent = 12;

}  // namespace

std::shared_ptr<SNTouchIDManager> SNTouchIDManager::makeShared(Bridge& bridge,
                                                               std::function<void()> closeOverlay) {
  return std::shared_ptr<SNTouchIDManager>(new SNTouchIDManager(bridge, std::move(closeOverlay)));
}

SNTouchIDManager::SNTouchIDManager(Bridge& bridge, std::function<void()> closeOverlay)
    : bridge_(bridge), platform_(bridge.platform()), closeOverlay_(std::move(closeOverlay)) {}

std::shared_ptr<BiometricInterface> SNTouchIDManager::bioMetricInterface() {
  if (platform_.biometricResource) return platform_.biometricResource->_biometricKitInterface();
  if (platform_.biometricEventMonitor) return platform_.biometricEventMonitor;
  if (!platform_.biometricKit) loadBiometricKit();
  return platform_.biometricKit ? platform_.biometricKit->delegate() : nullptr;
}

void SNTouchIDManager::loadBiometricKit() {
  if (platform_.libraries->loadBundle(std::string(biometricKitPath)))
    bridge_.logMessage("BiometricKit.framework loaded successfully");
}

void SNTouchIDManager::startManager() {
  const auto interface = bioMetricInterface();
  if (running_ || starting_ || !bridge_.isBioMetricsSupported()) return matchAgain(interface);
  starting_ = true;
  ++counter_;
  bridge_.isIOS10() ? takeInterface(interface) : takeEventMonitor();
  starting_ = false;
  running_ = true;
  callIfSet(managerStarted_, running_);
}

void SNTouchIDManager::matchAgain(const std::shared_ptr<BiometricInterface>& interface) {
  if (bridge_.isIOS11() && interface && interface->answersMatchOperation)
    bridge_.startBioMetricsResource(shared_from_this(), /*shouldAddDarwinObserver=*/false);
}

void SNTouchIDManager::stopManager() {
  counter_ = std::max<std::int64_t>(counter_ - 1, 0);
  if (platform_.biometricResource) platform_.biometricResource->removeObserver(shared_from_this());
  closeOverlay_();
  if (!canStop()) return;
  stopping_ = true;
  bridge_.isIOS10() ? giveInterfaceBack() : giveEventMonitorBack();
  forgetWhatWasTaken();
  stopping_ = false;
  running_ = false;
  callIfSet(managerStopped_, running_);
  clearBlocks();
}

bool SNTouchIDManager::canStop() const {
  return (running_ && !stopping_ && bridge_.isBioMetricsSupported()) || counter_ >= 1;
}

void SNTouchIDManager::clearBlocks() {
  handleEventBlock_ = nullptr;
  observeEventBlock_ = nullptr;
  managerStarted_ = nullptr;
  managerStopped_ = nullptr;
}

bool SNTouchIDManager::isIgnorable(BiometricEvent event) const {
  return event == ignorableEvent && bridge_.isIOS12() && bridge_.isBioMetricsSupported();
}

void SNTouchIDManager::logIgnored(BiometricEvent event) const {
  bridge_.logMessage("Ignoring event %d on iOS 12 for Touch ID device..", event);
}

void SNTouchIDManager::biometricKitInterfaceHandleEvent(
    const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event) {
  if (isIgnorable(event) && !bridge_.supportsFaceID()) return logIgnored(event);
  callIfSet(handleEventBlock_, interface, event);
}

void SNTouchIDManager::biometricKitInterfaceObserveEvent(
    const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event) {
  // Unlike handled events, whatever the kind of sensor.
  if (isIgnorable(event)) return logIgnored(event);
  callIfSet(observeEventBlock_, interface, event);
}

void SNTouchIDManager::biometricEventMonitorHandleBiometricEvent(
    const std::shared_ptr<SBUIBiometricEventMonitor>& monitor, BiometricEvent event) {
  callIfSet(handleEventBlock_, monitor, event);
}

std::string SNTouchIDManager::description() const {
  return "<SNTouchIDManager>";
}

}  // namespace sentrel
