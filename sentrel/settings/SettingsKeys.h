#pragma once

#include <span>
#include <string_view>

#include "sentrel/bridge/FolderKeys.h"
#include "sentrel/platform/Export.h"

namespace sentrel {

/// Where the settings file stands on the device, whatever the process's home folder.
inline constexpr std::string_view settingsFilePath =
    "/var/mobile/Library/Preferences/com.quorvin.sentrel.plist";

/// The keys of the settings file.
namespace settings_keys {

inline constexpr std::string_view enabled = "SentrelEnabled";
inline constexpr std::string_view vibrateOnError = "SentrelVibrateOnError";
inline constexpr std::string_view iconArrangement = "SentrelIconArrangement";
inline constexpr std::string_view protection3DTouch = "Sentrel3DTouchProtection";
inline constexpr std::string_view appSwitcher = "SentrelAppSwitcher";
inline constexpr std::string_view respring = "SentrelRespring";
inline constexpr std::string_view reboot = "SentrelReboot";
inline constexpr std::string_view unlockWithWatch = "SentrelUnlockWithWatch";
inline constexpr std::string_view passcode = "SentrelPasscode";
inline constexpr std::string_view usePasscodeOnly = "SentrelUsePasscodeOnly";
inline constexpr std::string_view callerIDOn = "SentrelCallerIDOn";
inline constexpr std::string_view callerIDAllowAnswer = "SentrelCallerIDAllowAnswer";
inline constexpr std::string_view callerIDOnlyForContacts = "SentrelCallerIDOnlyForContacts";
inline constexpr std::string_view callerIDRemoveFromLockScreen =
    "SentrelCallerIDRemoveFromLockScreen";
inline constexpr std::string_view callerIDHideOnAttentionAway =
    "SentrelCallerIDHideOnAttentionAway";
inline constexpr std::string_view callerNameText = "SentrelCallerIDCallerNameText";
inline constexpr std::string_view callerLabelText = "SentrelCallerIDCallerLabelText";
/// Spelled so on purpose: files in use carry it.
inline constexpr std::string_view showNotificationAlert = "SentrelShowNoticationAlert";
inline constexpr std::string_view remember = "SentrelRemember";
inline constexpr std::string_view rememberUntilDeviceLocked = "SentrelRememberUntilDeviceLocked";
inline constexpr std::string_view rememberTime = "SentrelRememberTime";
inline constexpr std::string_view applyUnlockSession = "SentrelApplyUnlockSession";
inline constexpr std::string_view photosProtected = "SentrelPhotosProtected";
inline constexpr std::string_view quitProtectedFolderOnAppLaunch =
    "SentrelQuitProtectedFolderOnAppLaunch";
inline constexpr std::string_view allFoldersProtected = "SentrelAllFoldersProtected";
inline constexpr std::string_view blurEffectsOn = "SentrelBlurEffectsOn";
inline constexpr std::string_view blurEffectType = "SentrelBlurEffectType";
inline constexpr std::string_view blurEffectsText = "SentrelBlurEffectsText";
inline constexpr std::string_view applications = "SentrelApplications";
inline constexpr std::string_view notificationApps = "SentrelNCApps";
inline constexpr std::string_view settingsBundles = "SentrelSettingsBundles";
inline constexpr std::string_view flipSwitches = "SentrelFlipSwitches";
inline constexpr std::string_view controlCenter = "SentrelControlCenter";
inline constexpr std::string_view folders = "SentrelFolders";
inline constexpr std::string_view trustedNetworks = "SentrelTrustedNetworks";
inline constexpr std::string_view enableLogging = "SentrelEnableLogging";

}  // namespace settings_keys

/// What the file is expected to hold under a key. Readers are lenient; this is what a writer of
/// the file, or a check of it, goes by.
enum class SettingsType { boolean, real, integer, string, stringArray, folderArray };

struct SettingsKey {
  std::string_view name;
  SettingsType type;
};

/// Every key of the settings file, in the order in which they are loaded.
SENTREL_API std::span<const SettingsKey> allSettingsKeys() noexcept;

/// The key of that name, or null.
SENTREL_API const SettingsKey* findSettingsKey(std::string_view name) noexcept;

}  // namespace sentrel
