#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "sentrel/bridge/TextFormat.h"
#include "sentrel/platform/BiometricObserver.h"
#include "sentrel/platform/HomeScreen.h"
#include "sentrel/platform/MessageChannel.h"
#include "sentrel/platform/OperationQueue.h"
#include "sentrel/platform/PlatformError.h"
#include "sentrel/platform/Seconds.h"

namespace sentrel {

/// The bridge to the device and to the other processes: class operations only, all on behalf of
/// the current Process. Each query computes its answer where that is visible, and otherwise asks
/// the home-screen process; a missing reply reads as NO or none. The home-screen process has nobody
/// to ask, and reads every such reply as missing.
///
/// Every alternative is tried only where the platform has it, in a fixed order. A question about
/// an item is NO or none for the empty identifier, without asking anybody.
///
/// Queries run on the caller's thread and those that ask block it; actions are for the main thread.
class SENTREL_API SNUtils {
 public:
  SNUtils() = delete;

  // --- Messages, notifications, log ----------------------------------------------------------

  /// Whether this process is the home screen's.
  static bool isSpringBoard();

  /// `key` in the current language of the process's main bundle, `key` itself where it has none.
  static std::string_view localizedString(std::string_view key);

  /// Sends a named request to the home-screen process and waits for the reply, for a bounded time.
  static UserInfo sendMessageToSpringBoardAndReceiveReplyName(std::string_view name,
                                                              const UserInfo& userInfo);

  /// Posts a notification without payload to every process.
  static void postDarwinNotification(std::string_view name);

  /// Posts a notification to every process, with a copy of `params` as its payload.
  static void postCFDistributedNotification(std::string_view name, const UserInfo& params);

  /// The one entry point for log lines. Silent unless logging is switched on; an application then
  /// sends the line to the home-screen process. The home-screen process itself writes nothing.
  template <class... Arguments>
  static void logMessage(std::string_view format, const Arguments&... arguments) {
    if (isLoggingEnabled()) sendLogLine(formatText(format, {TextArgument(arguments)...}));
  }

  /// The queue for work of this system beside the main queue, one a process.
  static OperationQueue& operationQueue();

  // --- Values that the hooking side sets and the library reads -------------------------------

  /// Whether a request comes from the control centre.
  static void setRequestingFromCC(bool value);
  static bool __isRequestingFromCC();

  static void setLockscreenAsDimmed(bool value);
  static bool __isLockscreenAsDimmed();

  /// None also means that no request comes from the control centre any more.
  static void setCurrentAuthenticatedAppBundleId(std::optional<std::string> bundleIdentifier);
  static std::optional<std::string> __currentAuthenticatedAppBundleId();

  /// How long a prompt waits for the control centre to get out of its way.
  static Seconds dispatchDelayFromCC();

  // --- Biometrics and texts ------------------------------------------------------------------

  /// What a prompt says, localised; none for a sensor of an unknown kind.
  static std::optional<std::string> authenticationMessage();

  /// The message for the middle of a sentence. With Face ID only its first letter is lowered, and
  /// a message of one letter is raised instead, as it has always been.
  static std::optional<std::string> loweredCaseAuthenticationMessage();

  static bool supportsTouchID();

  /// Once YES, it stays so.
  static bool supportsFaceID();

  static bool isBioMetricsSupported();

  /// Whether the sensor may unlock the device.
  static bool isBioMetricEnabledForUnlock();

  using AuthenticationCompletion =
      std::function<void(bool success, const std::optional<PlatformError>& error)>;

  /// Has the system ask the owner by the sensor. A device without one passes at once. The
  /// completion may be empty, and may be called on a thread of the system's.
  static void requestForAuthentication(const std::string& reason,
                                       AuthenticationCompletion completion);

  // --- Device state --------------------------------------------------------------------------

  /// Whether the system's version is at least the one named.
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

  /// Whether a legacy alert view is the way to prompt in this process.
  static bool canUseAlertView();

  // --- Installed extensions ------------------------------------------------------------------

  /// Whether a file stands at `path`, looked at twice.
  static bool isTweakInstalled(const std::string& path);
  static bool isFlipSwitchInstalled();
  static bool isSentrelInstalled();
  static bool isCallBarInstalled();

  /// Looked for on old phone models only.
  static bool isLockDownInstalled();

  // --- Applications --------------------------------------------------------------------------

  static std::optional<std::string> appName(const std::string& bundleIdentifier);
  static bool isSystemApplication(const std::string& bundleIdentifier);
  static bool isApplication(const std::string& bundleIdentifier);
  static bool isHiddenApp(const std::string& bundleIdentifier);

  /// What people call an icon or an application; never empty.
  static std::optional<std::string> displayName(const DisplayItem& item);

  // --- Folders -------------------------------------------------------------------------------

  /// NO only for an application that lies on the home screen itself; YES where nobody can tell.
  static bool hasAnyParentFolder(const std::string& bundleIdentifier);

  /// The icon's own name and identifier and, under "SentrelAllIcons", the record of the folder that
  /// the application lies in; none outside every folder.
  static std::optional<PropertyList::Dictionary> protectedFolderData(
      const std::string& bundleIdentifier);

  /// The icon entries of a folder record, in order. Icons without a name are left out.
  static PropertyList::Array allIconsAsDictionary(const SBIcons& icons);

  /// The record of a live folder: its name, empty when it has none, and the entries of its icons.
  static PropertyList::Dictionary folderRecord(const SBFolder& folder);

  // --- Actions -------------------------------------------------------------------------------

  /// Locks the device. Outside the home-screen process a new enough system is asked to do it there.
  static void lockUI();

  /// With `force`, relocks the lock screen even where the device could be locked more gently.
  static void lockUI(bool force);

  /// Sends the application at the front to the background.
  static void suspendFrontMostApp();

  /// Restarts the device.
  static void reboot();

  // --- The sensor ----------------------------------------------------------------------------

  using Observer = std::shared_ptr<BiometricObserver>;

  /// Takes the sensor for this system: the home-screen process registers the observer and takes an
  /// assertion; any other has the home screen do so, and with `shouldAddDarwinObserver` hands the
  /// observer the events that come from there. Observers are not retained.
  static void startBioMetricsResource(const Observer& observer, bool shouldAddDarwinObserver);
  static void startBioMetricsResource(bool shouldAddDarwinObserver);

  /// Gives the sensor back.
  static void stopBioMetricsResource(const Observer& observer);
  static void stopBioMetricsResource();

  /// Drops every assertion on the sensor that was taken under this system's name, also by earlier
  /// runs. Those of others stay.
  static void resetBioMetricsResourceCache(const Observer& observer);
  static void resetBioMetricsResourceCache();

  /// Has the sensor watch for a face, and tell `delegate`. One watch a process: a new one ends the
  /// one before.
  static void startPresenceDetectOperation(const Observer& delegate);
  static void startPresenceDetectOperation();
  static void stopPresenceDetectOperation();

  // --- Diagnostics ---------------------------------------------------------------------------

  /// Has the optional logging library log everything, or no longer. The line in the system log
  /// reads the same for both.
  static void fullLogging(bool flag);

  /// Has the optional logging library log what matches, or no longer.
  static void selectiveLogging(bool flag, std::int64_t type, const std::string& regEx,
                               const std::string& selectorRegEx);

  static void testLaunchApplication(const std::string& bundleIdentifier);

 private:
  static bool isLoggingEnabled();
  static void sendLogLine(const std::string& message);
};

}  // namespace sentrel
