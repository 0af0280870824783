#include "sentrel/bridge/SNUtils.h"

#include <utility>

namespace sentrel {

bool SNUtils::isSpringBoard() {
  return Bridge::sharedBridge().isSpringBoard();
}

std::string_view SNUtils::localizedString(std::string_view key) {
  return Bridge::sharedBridge().localizedString(key);
}

UserInfo SNUtils::sendMessageToSpringBoardAndReceiveReplyName(std::string_view name,
                                                              const UserInfo& userInfo) {
  return Bridge::sharedBridge().sendMessageToSpringBoardAndReceiveReplyName(name, userInfo);
}

void SNUtils::postDarwinNotification(std::string_view name) {
  Bridge::sharedBridge().postDarwinNotification(name);
}

void SNUtils::postCFDistributedNotification(std::string_view name, const UserInfo& params) {
  Bridge::sharedBridge().postCFDistributedNotification(name, params);
}

OperationQueue& SNUtils::operationQueue() {
  return Bridge::sharedBridge().operationQueue();
}

void SNUtils::setRequestingFromCC(bool value) {
  Bridge::sharedBridge().setRequestingFromCC(value);
}

bool SNUtils::__isRequestingFromCC() {
  return Bridge::sharedBridge().__isRequestingFromCC();
}

void SNUtils::setLockscreenAsDimmed(bool value) {
  Bridge::sharedBridge().setLockscreenAsDimmed(value);
}

bool SNUtils::__isLockscreenAsDimmed() {
  return Bridge::sharedBridge().__isLockscreenAsDimmed();
}

void SNUtils::setCurrentAuthenticatedAppBundleId(std::optional<std::string> bundleIdentifier) {
  Bridge::sharedBridge().setCurrentAuthenticatedAppBundleId(std::move(bundleIdentifier));
}

std::optional<std::string> SNUtils::__currentAuthenticatedAppBundleId() {
  return Bridge::sharedBridge().__currentAuthenticatedAppBundleId();
}

Seconds SNUtils::dispatchDelayFromCC() {
  return Bridge::sharedBridge().dispatchDelayFromCC();
}

std::optional<std::string> SNUtils::authenticationMessage() {
  return Bridge::sharedBridge().authenticationMessage();
}

std::optional<std::string> SNUtils::loweredCaseAuthenticationMessage() {
  return Bridge::sharedBridge().loweredCaseAuthenticationMessage();
}

bool SNUtils::supportsTouchID() {
  return Bridge::sharedBridge().supportsTouchID();
}

bool SNUtils::supportsFaceID() {
  return Bridge::sharedBridge().supportsFaceID();
}

bool SNUtils::isBioMetricsSupported() {
  return Bridge::sharedBridge().isBioMetricsSupported();
}

bool SNUtils::isBioMetricEnabledForUnlock() {
  return Bridge::sharedBridge().isBioMetricEnabledForUnlock();
}

void SNUtils::requestForAuthentication(const std::string& reason,
                                       AuthenticationCompletion completion) {
  Bridge::sharedBridge().requestForAuthentication(reason, std::move(completion));
}

bool SNUtils::isIOS9() {
  return Bridge::sharedBridge().isIOS9();
}

bool SNUtils::isIOS10() {
  return Bridge::sharedBridge().isIOS10();
}

bool SNUtils::isIOS11() {
  return Bridge::sharedBridge().isIOS11();
}

bool SNUtils::isIOS12() {
  return Bridge::sharedBridge().isIOS12();
}

bool SNUtils::isIOS13() {
  return Bridge::sharedBridge().isIOS13();
}

bool SNUtils::isIOS14() {
  return Bridge::sharedBridge().isIOS14();
}

bool SNUtils::isNotificationProtectionEnabled() {
  return Bridge::sharedBridge().isNotificationProtectionEnabled();
}

bool SNUtils::isDeviceHasPasscode() {
  return Bridge::sharedBridge().isDeviceHasPasscode();
}

bool SNUtils::isDeviceLocked() {
  return Bridge::sharedBridge().isDeviceLocked();
}

bool SNUtils::isFingerOn() {
  return Bridge::sharedBridge().isFingerOn();
}

bool SNUtils::isDarkModeEnabled() {
  return Bridge::sharedBridge().isDarkModeEnabled();
}

bool SNUtils::canUseAlertView() {
  return Bridge::sharedBridge().canUseAlertView();
}

bool SNUtils::isTweakInstalled(const std::string& path) {
  return Bridge::sharedBridge().isTweakInstalled(path);
}

bool SNUtils::isFlipSwitchInstalled() {
  return Bridge::sharedBridge().isFlipSwitchInstalled();
}

bool SNUtils::isSentrelInstalled() {
  return Bridge::sharedBridge().isSentrelInstalled();
}

bool SNUtils::isCallBarInstalled() {
  return Bridge::sharedBridge().isCallBarInstalled();
}

bool SNUtils::isLockDownInstalled() {
  return Bridge::sharedBridge().isLockDownInstalled();
}

std::optional<std::string> SNUtils::appName(const std::string& bundleIdentifier) {
  return Bridge::sharedBridge().appName(bundleIdentifier);
}

bool SNUtils::isSystemApplication(const std::string& bundleIdentifier) {
  return Bridge::sharedBridge().isSystemApplication(bundleIdentifier);
}

bool SNUtils::isApplication(const std::string& bundleIdentifier) {
  return Bridge::sharedBridge().isApplication(bundleIdentifier);
}

bool SNUtils::isHiddenApp(const std::string& bundleIdentifier) {
  return Bridge::sharedBridge().isHiddenApp(bundleIdentifier);
}

std::optional<std::string> SNUtils::displayName(const DisplayItem& item) {
  return Bridge::sharedBridge().displayName(item);
}

bool SNUtils::hasAnyParentFolder(const std::string& bundleIdentifier) {
  return Bridge::sharedBridge().hasAnyParentFolder(bundleIdentifier);
}

std::optional<PropertyList::Dictionary> SNUtils::protectedFolderData(
    const std::string& bundleIdentifier) {
  return Bridge::sharedBridge().protectedFolderData(bundleIdentifier);
}

PropertyList::Array SNUtils::allIconsAsDictionary(const SBIcons& icons) {
  return Bridge::sharedBridge().allIconsAsDictionary(icons);
}

PropertyList::Dictionary SNUtils::folderRecord(const SBFolder& folder) {
  return Bridge::sharedBridge().folderRecord(folder);
}

void SNUtils::lockUI() {
  Bridge::sharedBridge().lockUI();
}

void SNUtils::lockUI(bool force) {
  Bridge::sharedBridge().lockUI(force);
}

void SNUtils::suspendFrontMostApp() {
  Bridge::sharedBridge().suspendFrontMostApp();
}

void SNUtils::reboot() {
  Bridge::sharedBridge().reboot();
}

void SNUtils::startBioMetricsResource(const Observer& observer, bool shouldAddDarwinObserver) {
  Bridge::sharedBridge().startBioMetricsResource(observer, shouldAddDarwinObserver);
}

void SNUtils::startBioMetricsResource(bool shouldAddDarwinObserver) {
  Bridge::sharedBridge().startBioMetricsResource(shouldAddDarwinObserver);
}

void SNUtils::stopBioMetricsResource(const Observer& observer) {
  Bridge::sharedBridge().stopBioMetricsResource(observer);
}

void SNUtils::stopBioMetricsResource() {
  Bridge::sharedBridge().stopBioMetricsResource();
}

void SNUtils::resetBioMetricsResourceCache(const Observer& observer) {
  Bridge::sharedBridge().resetBioMetricsResourceCache(observer);
}

void SNUtils::resetBioMetricsResourceCache() {
  Bridge::sharedBridge().resetBioMetricsResourceCache();
}

void SNUtils::startPresenceDetectOperation(const Observer& delegate) {
  Bridge::sharedBridge().startPresenceDetectOperation(delegate);
}

void SNUtils::startPresenceDetectOperation() {
  Bridge::sharedBridge().startPresenceDetectOperation();
}

void SNUtils::stopPresenceDetectOperation() {
  Bridge::sharedBridge().stopPresenceDetectOperation();
}

void SNUtils::fullLogging(bool flag) {
  Bridge::sharedBridge().fullLogging(flag);
}

void SNUtils::selectiveLogging(bool flag, std::int64_t type, const std::string& regEx,
                               const std::string& selectorRegEx) {
  Bridge::sharedBridge().selectiveLogging(flag, type, regEx, selectorRegEx);
}

void SNUtils::testLaunchApplication(const std::string& bundleIdentifier) {
  Bridge::sharedBridge().testLaunchApplication(bundleIdentifier);
}

}  // namespace sentrel
