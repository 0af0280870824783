#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/SystemVersion.h"
#include "sentrel/platform/Answer.h"

namespace sentrel {

bool Bridge::isIOS9() {
  return isSystemVersionAtLeast(platform_, 9);
}

bool Bridge::isIOS10() {
  return isSystemVersionAtLeast(platform_, 10);
}

bool Bridge::isIOS11() {
  return isSystemVersionAtLeast(platform_, 11);
}

bool Bridge::isIOS12() {
  return isSystemVersionAtLeast(platform_, 12);
}

bool Bridge::isIOS13() {
  return isSystemVersionAtLeast(platform_, 13);
}

bool Bridge::isIOS14() {
  return isSystemVersionAtLeast(platform_, 14);
}

bool Bridge::isNotificationProtectionEnabled() {
  return !isIOS11();
}

bool Bridge::isDeviceHasPasscode() {
  if (const auto isSet = answer(platform_.passcodeManager, &MCPasscodeManager::isPasscodeSet))
    return *isSet;
  if (!isSpringBoard()) return ask<messages::IsPasscodeSet>(*this);
  return platform_.profileConnection && platform_.profileConnection->isPasscodeSet();
}

bool Bridge::isDeviceLocked() {
  if (!isSpringBoard()) return ask<messages::IsDeviceLocked>(*this);
  if (const auto isLocked = answer(platform_.springBoard, &SpringBoardApplication::isLocked))
    return *isLocked;
  return answer(platform_.lockScreenManager, &SBLockScreenManager::isUILocked)
      .orElse(/*fallback=*/false);
}

bool Bridge::isFingerOn() {
  if (!isSpringBoard())
    return ask<messages::IsFingerOn>(*this, platform_.mainBundle->bundleIdentifier());
  return platform_.biometricResource && platform_.biometricResource->isFingerOn();
}

bool Bridge::isDarkModeEnabled() {
  const auto& screen = platform_.screen;
  const auto style = screen && isSpringBoard() ? screen->userInterfaceStyle() : std::nullopt;
  if (style) return *style == UIUserInterfaceStyle::dark;
  return ask<messages::IsDarkModeEnabled>(*this);
}

bool Bridge::canUseAlertView() {
  if (isSpringBoard() && isIOS13())
    return answer(platform_.springBoard, &SpringBoardApplication::connectedScenes).orElse(0) == 0;
  return platform_.qvUtils && platform_.qvUtils->canUseAlertView();
}

}  // namespace sentrel
