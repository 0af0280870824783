#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/Current.h"
#include "sentrel/bridge/SystemVersion.h"

namespace sentrel {

bool SNUtils::isIOS9() {
  return isSystemVersionAtLeast(currentPlatform(), 9);
}

bool SNUtils::isIOS10() {
  return isSystemVersionAtLeast(currentPlatform(), 10);
}

bool SNUtils::isIOS11() {
  return isSystemVersionAtLeast(currentPlatform(), 11);
}

bool SNUtils::isIOS12() {
  return isSystemVersionAtLeast(currentPlatform(), 12);
}

bool SNUtils::isIOS13() {
  return isSystemVersionAtLeast(currentPlatform(), 13);
}

bool SNUtils::isIOS14() {
  return isSystemVersionAtLeast(currentPlatform(), 14);
}

bool SNUtils::isNotificationProtectionEnabled() {
  return !isIOS11();
}

bool SNUtils::isDeviceHasPasscode() {
  const Platform& platform = currentPlatform();
  if (platform.passcodeManager && platform.passcodeManager->isPasscodeSet)
    return platform.passcodeManager->isPasscodeSet();
  if (!isSpringBoard()) return ask<messages::IsPasscodeSet>();
  return platform.profileConnection && platform.profileConnection->isPasscodeSet();
}

bool SNUtils::isDeviceLocked() {
  if (!isSpringBoard()) return ask<messages::IsDeviceLocked>();
  const Platform& platform = currentPlatform();
  if (platform.springBoard && platform.springBoard->isLocked)
    return platform.springBoard->isLocked();
  const auto& manager = platform.lockScreenManager;
  return manager && manager->isUILocked && manager->isUILocked();
}

bool SNUtils::isFingerOn() {
  const Platform& platform = currentPlatform();
  if (!isSpringBoard()) return ask<messages::IsFingerOn>(platform.mainBundle->bundleIdentifier());
  return platform.biometricResource && platform.biometricResource->isFingerOn();
}

bool SNUtils::isDarkModeEnabled() {
  const auto& screen = currentPlatform().screen;
  const auto style = screen && isSpringBoard() ? screen->userInterfaceStyle() : std::nullopt;
  if (style) return *style == UIUserInterfaceStyle::dark;
  return ask<messages::IsDarkModeEnabled>();
}

bool SNUtils::canUseAlertView() {
  const Platform& platform = currentPlatform();
  if (isSpringBoard() && isIOS13()) {
    const auto& springBoard = platform.springBoard;
    return !springBoard || !springBoard->connectedScenes || springBoard->connectedScenes() == 0;
  }
  return platform.qvUtils && platform.qvUtils->canUseAlertView();
}

}  // namespace sentrel
