#include "sentrel/biometrics/SNTouchIDManager.h"

#include <algorithm>
#include <string_view>

#include "sentrel/Process.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/biometrics/CallIfSet.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel {
namespace {

constexpr std::string_view biometricKitPath =
    "/System/Library/PrivateFrameworks/BiometricKit.framework";

/// Newer systems report it between the events that count.
constexpr BiometricEvent ignorableEvent = 12;

bool isIgnorable(BiometricEvent event) {
  return event == ignorableEvent && SNUtils::isIOS12() && SNUtils::isBioMetricsSupported();
}

void logIgnored(BiometricEvent event) {
  SNUtils::logMessage("Ignoring event %d on iOS 12 for Touch ID device..", event);
}

}  // namespace

std::shared_ptr<SNTouchIDManager> SNTouchIDManager::sharedManager() {
  return Process::current().touchIDManager();
}

std::shared_ptr<SNTouchIDManager> SNTouchIDManager::makeShared(Platform& platform) {
  return std::shared_ptr<SNTouchIDManager>(new SNTouchIDManager(platform));
}

std::shared_ptr<BiometricInterface> SNTouchIDManager::bioMetricInterface() {
  if (platform_.biometricResource) return platform_.biometricResource->_biometricKitInterface();
  if (platform_.biometricEventMonitor) return platform_.biometricEventMonitor;
  if (!platform_.biometricKit) loadBiometricKit();
  return platform_.biometricKit ? platform_.biometricKit->delegate() : nullptr;
}

void SNTouchIDManager::loadBiometricKit() {
  if (platform_.libraries->loadBundle(std::string(biometricKitPath)))
    SNUtils::logMessage("BiometricKit.framework loaded successfully");
}

void SNTouchIDManager::startManager() {
  const auto interface = bioMetricInterface();
  if (running_ || starting_ || !SNUtils::isBioMetricsSupported()) return matchAgain(interface);
  starting_ = true;
  ++counter_;
  SNUtils::isIOS10() ? takeInterface(interface) : takeEventMonitor();
  starting_ = false;
  running_ = true;
  callIfSet(managerStarted_, running_);
}

void SNTouchIDManager::matchAgain(const std::shared_ptr<BiometricInterface>& interface) {
  if (SNUtils::isIOS11() && interface && interface->answersMatchOperation)
    SNUtils::startBioMetricsResource(shared_from_this(), /*shouldAddDarwinObserver=*/false);
}

void SNTouchIDManager::stopManager() {
  counter_ = std::max<std::int64_t>(counter_ - 1, 0);
  if (platform_.biometricResource) platform_.biometricResource->removeObserver(shared_from_this());
  SNWindow::sharedInstance()->closeWindow();
  if (!canStop()) return;
  stopping_ = true;
  SNUtils::isIOS10() ? giveInterfaceBack() : giveEventMonitorBack();
  forgetWhatWasTaken();
  stopping_ = false;
  running_ = false;
  callIfSet(managerStopped_, running_);
  clearBlocks();
}

bool SNTouchIDManager::canStop() const {
  return (running_ && !stopping_ && SNUtils::isBioMetricsSupported()) || counter_ >= 1;
}

void SNTouchIDManager::clearBlocks() {
  handleEventBlock_ = nullptr;
  observeEventBlock_ = nullptr;
  managerStarted_ = nullptr;
  managerStopped_ = nullptr;
}

void SNTouchIDManager::biometricKitInterfaceHandleEvent(
    const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event) {
  if (isIgnorable(event) && !SNUtils::supportsFaceID()) return logIgnored(event);
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
