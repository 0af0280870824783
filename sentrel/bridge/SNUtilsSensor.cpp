#include "sentrel/bridge/Current.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel {
namespace {

using Observer = SNUtils::Observer;
using Assertion = SBUIBiometricResource::Assertion;

constexpr std::string_view assertionReason = "Sentrel AuthenticationMode";
constexpr std::string_view ownReasonPrefix = "Sentrel";

constexpr std::int64_t unlockMatchingMode = 3;
constexpr std::int64_t otherMatchingMode = 5;

std::int64_t matchingMode() {
  if (!SNUtils::isDeviceHasPasscode() || SNUtils::isLockDownInstalled()) return otherMatchingMode;
  return SNUtils::isBioMetricEnabledForUnlock() ? unlockMatchingMode : otherMatchingMode;
}

Observer defaultObserver() {
  return Process::current().biometricMonitor();
}

Observer orDefault(const Observer& observer) {
  return observer ? observer : defaultObserver();
}

void acquireAssertion(const Observer& observer) {
  const auto& resource = currentPlatform().biometricResource;
  if (!resource) return;
  if (observer) resource->addObserver(observer);
  currentState().matchAssertion =
      resource->acquireMatchingAssertionWithMode(matchingMode(), std::string(assertionReason));
}

void sentrelPearlIDHandler(const Observer& observer, const Notification& notification) {
  SNUtils::logMessage("############ sentrelPearlIDHandler->Got data: %@", notification.userInfo);
  const PropertyList* code = notification.userInfo
                                 ? find(*notification.userInfo, notifications::pearlIDEventCodeKey)
                                 : nullptr;
  if (observer)
    observer->biometricKitInterfaceHandleEvent(nullptr, code ? code->integerValue() : 0);
}

void observeDistributedEvents(const Observer& observer) {
  auto handler = [observer = std::weak_ptr(observer)](const Notification& notification) {
    sentrelPearlIDHandler(observer.lock(), notification);
  };
  currentState().distributedObservers.insert_or_assign(
      observer.get(), currentPlatform().distributedCenter->addObserver(
                          std::string(notifications::pearlID), std::move(handler)));
}

bool isOwn(const Assertion& assertion) {
  return assertion->reason().starts_with(ownReasonPrefix);
}

void dropOwnAssertions(SBUIBiometricResource& resource) {
  for (const Assertion& assertion : resource._matchAssertions()) {
    if (!isOwn(assertion)) continue;
    assertion->invalidate();
    resource._removeMatchingAssertion(assertion);
    resource._deactivateAssertion(assertion);
  }
}

}  // namespace

void SNUtils::startBioMetricsResource(const Observer& observer, bool shouldAddDarwinObserver) {
  if (isSpringBoard()) return acquireAssertion(observer);
  if (shouldAddDarwinObserver) observeDistributedEvents(orDefault(observer));
  postDarwinNotification(notifications::startBioMetricAssertion);
}

void SNUtils::startBioMetricsResource(bool shouldAddDarwinObserver) {
  startBioMetricsResource(defaultObserver(), shouldAddDarwinObserver);
}

void SNUtils::stopBioMetricsResource(const Observer& observer) {
  if (isSpringBoard()) return resetBioMetricsResourceCache(observer);
  currentState().distributedObservers.erase(orDefault(observer).get());
  postDarwinNotification(notifications::stopBioMetricAssertion);
}

void SNUtils::stopBioMetricsResource() {
  stopBioMetricsResource(defaultObserver());
}

void SNUtils::resetBioMetricsResourceCache(const Observer& observer) {
  if (!isSpringBoard()) return postDarwinNotification(notifications::resetBioMetricAssertion);
  const auto& resource = currentPlatform().biometricResource;
  if (resource && observer) resource->removeObserver(observer);
  currentState().matchAssertion.reset();
  if (resource) dropOwnAssertions(*resource);
  stopPresenceDetectOperation();
}

void SNUtils::resetBioMetricsResourceCache() {
  resetBioMetricsResourceCache(defaultObserver());
}

}  // namespace sentrel
