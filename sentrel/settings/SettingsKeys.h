#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "sentrel/bridge/FolderKeys.h"
#include "sentrel/platform/Export.h"
#include "sentrel/settings/ItemSet.h"
#include "sentrel/settings/SettingsValues.h"

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

/// What an absent entry reads as. Texts are in English, and shown in the user's language; no value:
/// none, or an empty list.
using SettingsDefault = std::variant<std::monostate, bool, double, std::int64_t, std::string_view>;

/// The lists that keep what they hold in memory when the file does not hold them.
enum class SettingsList { folders, trustedNetworks };

/// Where an entry goes when the file is loaded.
using SettingsField =
    std::variant<bool SettingsValues::*, double SettingsValues::*, std::int64_t SettingsValues::*,
                 std::optional<std::string> SettingsValues::*, ItemSet, SettingsList>;

/// Everything about one key: who loads the file, changes it, shows it or checks it walks these.
struct SettingsKey {
  std::string_view name;
  SettingsType type;
  SettingsDefault fallback;
  SettingsField field;
};

/// Every key of the settings file, in the order in which they are loaded.
SENTREL_API std::span<const SettingsKey> allSettingsKeys() noexcept;

/// The key of that name, or null.
SENTREL_API const SettingsKey* findSettingsKey(std::string_view name) noexcept;

/// The key under which the file holds a set.
std::string_view settingsKeyOf(ItemSet set) noexcept;

/// What stands for a text that the file does not hold, in English.
std::string_view fallbackText(std::string_view name) noexcept;

}  // namespace sentrel
