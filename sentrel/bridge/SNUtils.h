#pragma once

#include "sentrel/bridge/Bridge.h"

namespace sentrel {

/// The current process's bridge by its stated names: class operations only. What each does stands
/// at Bridge.
class SENTREL_API SNUtils {
 public:
  using Observer = Bridge::Observer;
  using AuthenticationCompletion = Bridge::AuthenticationCompletion;

  SNUtils() = delete;

  // --- Messages, notifications, log ----------------------------------------------------------

  static bool isSpringBoard();

  static std::string_view localizedString(std::string_view key);

  static UserInfo sendMessageToSpringBoardAndReceiveReplyName(std::string_view name,
                                                              const UserInfo& userInfo);

  static void postDarwinNotification(std::string_view name);

  static void postCFDistributedNotification(std::string_view name, const UserInfo& params);

  template <class... Arguments>
  static void logMessage(std::string_view format, const Arguments&... arguments) {
    Bridge::sharedBridge().logMessage(format, arguments...);
  }

  static OperationQueue& operationQueue();

  // --- Values that the hooking side sets and the library reads -------------------------------

  static void setRequestingFromCC(bool value);
  static bool __isRequestingFromCC();

  static void setLockscreenAsDimmed(bool value);
  static bool __isLockscreenAsDimmed();

  static void setCurrentAuthenticatedAppBundleId(std::optional<std::string> bundleIdentifier);
  static std::optional<std::string> __currentAuthenticatedAppBundleId();

  static Seconds dispatchDelayFromCC();

  // --- Biometrics and texts ------------------------------------------------------------------

  static std::optional<std::string> authenticationMessage();

  static std::optional<std::string> loweredCaseAuthenticationMessage();

  static bool supportsTouchID();

  static bool supportsFaceID();

  static bool isBioMetricsSupported();

  static bool isBioMetricEnabledForUnlock();

  static void requestForAuthentication(const std::string& reason,
                                       AuthenticationCompletion completion);

  // --- Device state --------------------------------------------------------------------------

  static bool isIOS9();
  static bool isIOS10();
  static bool isIOS11();
  static bool isIOS12();
  static bool isIOS13();
  static bool isIOS14();

  static bool isNotificationProtectionEnabled();
  static bool isDeviceHasPasscode();
  static bool isDeviceLocked();
  static bool isFingerOn();
  static bool isDarkModeEnabled();

  static bool canUseAlertView();

  // --- Installed extensions ------------------------------------------------------------------

  static bool isTweakInstalled(const std::string& path);
  static bool isFlipSwitchInstalled();
  static bool isSentrelInstalled();
  static bool isCallBarInstalled();

  static bool isLockDownInstalled();

  // --- Applications --------------------------------------------------------------------------

  static std::optional<std::string> appName(const std::string& bundleIdentifier);
  static bool isSystemApplication(const std::string& bundleIdentifier);
  static bool isApplication(const std::string& bundleIdentifier);
  static bool isHiddenApp(const std::string& bundleIdentifier);

  static std::optional<std::string> displayName(const DisplayItem& item);

  // --- Folders -------------------------------------------------------------------------------

  static bool hasAnyParentFolder(const std::string& bundleIdentifier);

  static std::optional<PropertyList::Dictionary> protectedFolderData(
      const std::string& bundleIdentifier);

  static PropertyList::Array allIconsAsDictionary(const SBIcons& icons);

  static PropertyList::Dictionary folderRecord(const SBFolder& folder);

  // --- Actions -------------------------------------------------------------------------------

  static void lockUI();

  static void lockUI(bool force);

  static void suspendFrontMostApp();

  static void reboot();

  // --- The sensor ----------------------------------------------------------------------------

  static void startBioMetricsResource(const Observer& observer, bool shouldAddDarwinObserver);
  static void startBioMetricsResource(bool shouldAddDarwinObserver);

  static void stopBioMetricsResource(const Observer& observer);
  static void stopBioMetricsResource();

  static void resetBioMetricsResourceCache(const Observer& observer);
  static void resetBioMetricsResourceCache();

  static void startPresenceDetectOperation(const Observer& delegate);
  static void startPresenceDetectOperation();
  static void stopPresenceDetectOperation();

  // --- Diagnostics ---------------------------------------------------------------------------

  static void fullLogging(bool flag);

  static void selectiveLogging(bool flag, std::int64_t type, const std::string& regEx,
                               const std::string& selectorRegEx);

  static void testLaunchApplication(const std::string& bundleIdentifier);
};

}  // namespace sentrel
