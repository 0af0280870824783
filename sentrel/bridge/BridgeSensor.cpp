#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/BridgeState.h"
#include "sentrel/bridge/Notifications.h"

namespace sentrel {
namespace {

using Observer = Bridge::Observer;
using Assertion = SBUIBiometricResource::Assertion;

constexpr std::string_view assertionReason = "Sentrel AuthenticationMode";
constexpr std::string_view ownReasonPrefix = "Sentrel";

constexpr std::int64_t unlockMatchingMode = 3;
constexpr std::int64_t otherMatchingMode = 5;

void sentrelPearlIDHandler(Bridge& bridge, const Observer& observer,
                           const Notification& notification) {
  bridge.logMessage("############ sentrelPearlIDHandler->Got data: %@", notification.userInfo);
  const PropertyList* code = notification.userInfo
                                 ? find(*notification.userInfo, notifications::pearlIDEventCodeKey)
                                 : nullptr;
  if (observer)
    observer->biometricKitInterfaceHandleEvent(nullptr, code ? code->integerValue() : 0);
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

std::int64_t Bridge::matchingMode() {
  if (!isDeviceHasPasscode() || isLockDownInstalled()) return otherMatchingMode;
  return isBioMetricEnabledForUnlock() ? unlockMatchingMode : otherMatchingMode;
}

void Bridge::acquireAssertion(const Observer& observer) {
  const auto& resource = platform_.biometricResource;
  if (!resource) return;
  if (observer) resource->addObserver(observer);
  state().matchAssertion =
      resource->acquireMatchingAssertionWithMode(matchingMode(), std::string(assertionReason));
}

void Bridge::observeDistributedEvents(const Observer& observer) {
  auto handler = [this, observer = std::weak_ptr(observer)](const Notification& notification) {
    sentrelPearlIDHandler(*this, observer.lock(), notification);
  };
  state().distributedObservers.insert_or_assign(
      observer.get(), platform_.distributedCenter->addObserver(std::string(notifications::pearlID),
                                                               std::move(handler)));
}

void Bridge::startBioMetricsResource(const Observer& observer, bool shouldAddDarwinObserver) {
  if (isSpringBoard()) return acquireAssertion(observer);
  if (shouldAddDarwinObserver) observeDistributedEvents(observer ? observer : defaultObserver_());
  postDarwinNotification(notifications::startBioMetricAssertion);
}

void Bridge::startBioMetricsResource(bool shouldAddDarwinObserver) {
  startBioMetricsResource(defaultObserver_(), shouldAddDarwinObserver);
}

void Bridge::stopBioMetricsResource(const Observer& observer) {
  if (isSpringBoard()) return resetBioMetricsResourceCache(observer);
  state().distributedObservers.erase((observer ? observer : defaultObserver_()).get());
  postDarwinNotification(notifications::stopBioMetricAssertion);
}

void Bridge::stopBioMetricsResource() {
  stopBioMetricsResource(defaultObserver_());
}

void Bridge::resetBioMetricsResourceCache(const Observer& observer) {
  if (!isSpringBoard()) return postDarwinNotification(notifications::resetBioMetricAssertion);
  const auto& resource = platform_.biometricResource;
  if (resource && observer) resource->removeObserver(observer);
  state().matchAssertion.reset();
  if (resource) dropOwnAssertions(*resource);
  stopPresenceDetectOperation();
}

void Bridge::resetBioMetricsResourceCache() {
  resetBioMetricsResourceCache(defaultObserver_());
}

}  // namespace sentrel
