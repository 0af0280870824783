#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "sentrel/bridge/BridgeSettings.h"
#include "sentrel/bridge/TextFormat.h"
#include "sentrel/platform/BiometricObserver.h"
#include "sentrel/platform/HomeScreen.h"
#include "sentrel/platform/MessageChannel.h"
#include "sentrel/platform/OperationQueue.h"
#include "sentrel/platform/Platform.h"
#include "sentrel/platform/PlatformError.h"
#include "sentrel/platform/Seconds.h"

namespace sentrel {

struct BridgeState;

/// One process's bridge to its device and to the other processes. Each query computes its answer
/// where that is visible, and otherwise asks the home-screen process; a missing reply reads as NO
/// or none. The home-screen process has nobody to ask, and reads every such reply as missing.
///
/// Every alternative is tried only where the platform has it, in a fixed order. A question about
/// an item is NO or none for the empty identifier, without asking anybody.
///
/// Queries run on the caller's thread and those that ask block it; actions are for the main thread.
class SENTREL_API Bridge {
 public:
  using Observer = std::shared_ptr<BiometricObserver>;

  /// `defaultObserver` is asked who hears the sensor's events where nobody is named. Platform and
  /// settings outlive the bridge.
  Bridge(Platform& platform, const BridgeSettings& settings,
         std::function<Observer()> defaultObserver);
  ~Bridge();
  Bridge(const Bridge&) = delete;
  Bridge& operator=(const Bridge&) = delete;

  /// The current process's bridge.
  static Bridge& sharedBridge();

  /// The device that this bridge leads to.
  Platform& platform() const noexcept { return platform_; }

  // --- Messages, notifications, log ----------------------------------------------------------

  /// Whether this process is the home screen's.
  bool isSpringBoard() const noexcept { return isSpringBoard_; }

  /// `key` in the current language of the process's main bundle, `key` itself where it has none.
  std::string_view localizedString(std::string_view key);

  /// Sends a named request to the home-screen process and waits for the reply, for a bounded time.
  UserInfo sendMessageToSpringBoardAndReceiveReplyName(std::string_view name,
                                                       const UserInfo& userInfo);

  /// Posts a notification without payload to every process.
  void postDarwinNotification(std::string_view name);

  /// Posts a notification to every process, with a copy of `params` as its payload.
  void postCFDistributedNotification(std::string_view name, const UserInfo& params);

  /// The one entry point for log lines. Silent unless logging is switched on; an application then
  /// sends the line to the home-screen process. The home-screen process itself writes nothing.
  template <class... Arguments>
  void logMessage(std::string_view format, const Arguments&... arguments) {
    if (settings_.isLoggingEnabled()) sendLogLine(formatText(format, {TextArgument(arguments)...}));
  }

  /// The queue for work of this system beside the main queue, one a process.
  OperationQueue& operationQueue();

  // --- Values that the hooking side sets and the library reads -------------------------------

  /// Whether it is from the control centre that something was asked for.
  void setRequestingFromCC(bool value);
  bool __isRequestingFromCC();

  void setLockscreenAsDimmed(bool value);
  bool __isLockscreenAsDimmed();

  /// None also means that no request comes from the control centre any more.
  void setCurrentAuthenticatedAppBundleId(std::optional<std::string> bundleIdentifier);
  std::optional<std::string> __currentAuthenticatedAppBundleId();

  /// How long a prompt waits for the control centre to get out of its way.
  Seconds dispatchDelayFromCC();

  // --- Biometrics and texts ------------------------------------------------------------------

  /// What a prompt says, localised; none for a sensor of an unknown kind.
  std::optional<std::string> authenticationMessage();

  /// The message for the middle of a sentence. With Face ID only its first letter is lowered, and
  /// a message of one letter is raised instead, as it has always been.
  std::optional<std::string> loweredCaseAuthenticationMessage();

  bool supportsTouchID();

  /// Once YES, it stays so.
  bool supportsFaceID();

  bool isBioMetricsSupported();

  /// Whether the sensor may unlock the device.
  bool isBioMetricEnabledForUnlock();

  using AuthenticationCompletion =
      std::function<void(bool success, const std::optional<PlatformError>& error)>;

  /// Has the system ask the owner by the sensor. A device without one passes at once. The
  /// completion may be empty, and may be called on a thread of the system's.
  void requestForAuthentication(const std::string& reason, AuthenticationCompletion completion);

  // --- Device state --------------------------------------------------------------------------

  /// Whether the system's version is at least the one named.
  bool isIOS9();
  bool isIOS10();
  bool isIOS11();
  bool isIOS12();
  bool isIOS13();
  bool isIOS14();

  bool isNotificationProtectionEnabled();
  bool isDeviceHasPasscode();
  bool isDeviceLocked();
  bool isFingerOn();
  bool isDarkModeEnabled();

  /// Whether a legacy alert view is the way to prompt in this process.
  bool canUseAlertView();

  // --- Installed extensions ------------------------------------------------------------------

  /// Whether a file stands at `path`, looked at twice.
  bool isTweakInstalled(const std::string& path);
  bool isFlipSwitchInstalled();
  bool isSentrelInstalled();
  bool isCallBarInstalled();

  /// Looked for on old phone models only.
  bool isLockDownInstalled();

  // --- Applications --------------------------------------------------------------------------

  std::optional<std::string> appName(const std::string& bundleIdentifier);
  bool isSystemApplication(const std::string& bundleIdentifier);
  bool isApplication(const std::string& bundleIdentifier);
  bool isHiddenApp(const std::string& bundleIdentifier);

  /// What people call an icon or an application; never empty.
  std::optional<std::string> displayName(const DisplayItem& item);

  // --- Folders -------------------------------------------------------------------------------

  /// NO only for an application that lies on the home screen itself; YES where nobody can tell.
  bool hasAnyParentFolder(const std::string& bundleIdentifier);

  /// The icon's own name and identifier and, under "SentrelAllIcons", the record of the folder that
  /// the application lies in; none outside every folder.
  std::optional<PropertyList::Dictionary> protectedFolderData(const std::string& bundleIdentifier);

  /// The icon entries of a folder record, in order. Icons without a name are left out.
  PropertyList::Array allIconsAsDictionary(const SBIcons& icons);

  /// The record of a live folder: its name, empty when it has none, and the entries of its icons.
  PropertyList::Dictionary folderRecord(const SBFolder& folder);

  // --- Actions -------------------------------------------------------------------------------

  /// Locks the device. Outside the home-screen process a new enough system is asked to do it there.
  void lockUI();

  /// With `force`, relocks the lock screen even where the device could be locked more gently.
  void lockUI(bool force);

  /// Sends the application at the front to the background.
  void suspendFrontMostApp();

  /// Restarts the device.
  void reboot();

  // --- The sensor ----------------------------------------------------------------------------

  /// Takes the sensor for this system: the home-screen process registers the observer and takes an
  /// assertion; any other has the home screen do so, and with `shouldAddDarwinObserver` hands the
  /// observer the events that come from there. Observers are not retained.
  void startBioMetricsResource(const Observer& observer, bool shouldAddDarwinObserver);
  void startBioMetricsResource(bool shouldAddDarwinObserver);

  /// Gives the sensor back.
  void stopBioMetricsResource(const Observer& observer);
  void stopBioMetricsResource();

  /// Drops every assertion on the sensor that was taken under this system's name, also by earlier
  /// runs. Those of others stay.
  void resetBioMetricsResourceCache(const Observer& observer);
  void resetBioMetricsResourceCache();

  /// Has the sensor watch for a face, and tell `delegate`. One watch a process: a new one ends the
  /// one before.
  void startPresenceDetectOperation(const Observer& delegate);
  void startPresenceDetectOperation();
  void stopPresenceDetectOperation();

  // --- Diagnostics ---------------------------------------------------------------------------

  /// Has the optional logging library log everything, or no longer. The line in the system log
  /// reads the same for both.
  void fullLogging(bool flag);

  /// Has the optional logging library log what matches, or no longer.
  void selectiveLogging(bool flag, std::int64_t type, const std::string& regEx,
                        const std::string& selectorRegEx);

  void testLaunchApplication(const std::string& bundleIdentifier);

 private:
  void sendLogLine(const std::string& message);

  /// Made when it is first needed.
  BridgeState& state();

  // Texts and the sensor.
  std::shared_ptr<BiometricInterface> biometricInterface() const;

  // Actions.
  bool lockByPasscodeManager();
  void relockUI();
  void relockUIOrPost(std::string_view request);
  void suspendByApplicationObjects();
  void restartInBackground(const std::string& bundleIdentifier);

  // Folders.
  std::optional<PropertyList::Dictionary> folderData(const SBIcon& icon, const SBFolder& folder,
                                                     const std::string& bundleIdentifier);

  // The sensor's resource.
  std::int64_t matchingMode();
  void acquireAssertion(const Observer& observer);
  void observeDistributedEvents(const Observer& observer);

  // Diagnostics.
  template <class Function>
  Function* messageLogFunction(const std::string& name);
  void writeToSystemLog(std::string_view format,
                        std::initializer_list<TextArgument> arguments = {});
  std::shared_ptr<PresenceDetectOperation> createPresenceDetectOperation(
      std::optional<PlatformError>& error);

  bool isExtensionInstalled(const std::string& fileName) const;

  Platform& platform_;
  const BridgeSettings& settings_;
  const std::function<Observer()> defaultObserver_;
  const bool isSpringBoard_;
  std::once_flag stateMade_;
  std::unique_ptr<BridgeState> state_;
};

}  // namespace sentrel
