#include <optional>

#include "sentrel/biometrics/CallIfSet.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Bridge.h"

namespace sentrel {
namespace {

/// Old systems may miss the first call.
constexpr Seconds secondMatchingDelay{1};

constexpr std::int64_t anyMatchMode = 0;

std::optional<std::string> describe(const std::shared_ptr<BiometricObserver>& delegate) {
  if (!delegate) return std::nullopt;
  return delegate->description();
}

bool isMonitor(const std::shared_ptr<BiometricObserver>& delegate) {
  return dynamic_cast<const SNTouchIDManager*>(delegate.get()) != nullptr;
}

}  // namespace

void SNTouchIDManager::takeInterface(const std::shared_ptr<BiometricInterface>& interface) {
  interface_ = interface;
  const auto delegate = interface ? interface->delegate() : nullptr;
  bridge_.logMessage("[interface delegate]: %@", describe(delegate));
  if (!isMonitor(delegate)) oldDelegate_ = delegate;
  if (!interface) return;
  interface->setDelegate(shared_from_this());
  if (interface->matchWithMode)
    callIfSet(interface->matchWithMode, anyMatchMode);
  else if (interface->answersMatchOperation)
    bridge_.startBioMetricsResource(shared_from_this(), /*shouldAddDarwinObserver=*/true);
}

void SNTouchIDManager::giveInterfaceBack() {
  // A repeated start may have had one match that was missing at the first.
  const auto interface = interface_ ? interface_ : bioMetricInterface();
  if (!interface) return;
  callIfSet(interface->cancel);
  callIfSet(interface->detectFingerWithOptions);
  if (interface_) interface_->setDelegate(oldDelegate_);
  if (interface->answersMatchOperation) bridge_.stopBioMetricsResource(shared_from_this());
}

void SNTouchIDManager::takeEventMonitor() {
  eventMonitor_ = platform_.biometricEventMonitor;
  biometricKit_ = platform_.biometricKit;
  if (biometricKit_) {
    oldKitDelegate_ = biometricKit_->delegate();
    biometricKit_->setDelegate(eventMonitor_);
  }
  if (!eventMonitor_) return;
  matchingEnabled_ = eventMonitor_->isMatchingEnabled();
  oldObservers_ = eventMonitor_->observers();
  for (const auto& observer : oldObservers_)
    eventMonitor_->removeObserver(observer);
  eventMonitor_->addObserver(shared_from_this());
  eventMonitor_->_setMatchingEnabled(/*value=*/true);
  eventMonitor_->_startMatching();
  platform_.mainQueue->after(secondMatchingDelay, [weak = std::weak_ptr(eventMonitor_)] {
    if (const auto monitor = weak.lock()) monitor->_startMatching();
  });
}

void SNTouchIDManager::giveEventMonitorBack() {
  if (eventMonitor_) {
    eventMonitor_->removeObserver(shared_from_this());
    for (const auto& observer : oldObservers_)
      eventMonitor_->addObserver(observer);
    eventMonitor_->_setMatchingEnabled(matchingEnabled_);
  }
  if (biometricKit_) biometricKit_->setDelegate(oldKitDelegate_);
}

void SNTouchIDManager::forgetWhatWasTaken() {
  interface_.reset();
  oldDelegate_.reset();
  eventMonitor_.reset();
  oldObservers_.clear();
  matchingEnabled_ = false;
  biometricKit_.reset();
  oldKitDelegate_.reset();
}

}  // namespace sentrel
