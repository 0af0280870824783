#include "sentrel/settings/SettingsKeys.h"

#include <algorithm>
#include <array>

namespace sentrel {
namespace {

namespace keys = settings_keys;

constexpr SettingsKey flag(std::string_view name, bool SettingsValues::*field) {
  return {name, SettingsType::boolean, false, field};
}

constexpr SettingsKey text(std::string_view name, std::optional<std::string> SettingsValues::*field,
                           SettingsDefault fallback = {}) {
  return {name, SettingsType::string, fallback, field};
}

constexpr SettingsKey items(std::string_view name, ItemSet set) {
  return {name, SettingsType::stringArray, {}, set};
}

constexpr std::array table = std::to_array<SettingsKey>({
    flag(keys::enabled, &SettingsValues::sentrelEnabled),
    flag(keys::vibrateOnError, &SettingsValues::vibrateOnError),
    flag(keys::iconArrangement, &SettingsValues::appArrangementProtected),
    flag(keys::protection3DTouch, &SettingsValues::is3DTouchProtected),
    flag(keys::appSwitcher, &SettingsValues::appSwitcherProtected),
    flag(keys::respring, &SettingsValues::respringProtected),
    flag(keys::reboot, &SettingsValues::rebootProtected),
    flag(keys::unlockWithWatch, &SettingsValues::unlockWithAppleWatch),
    text(keys::passcode, &SettingsValues::passcode),
    flag(keys::usePasscodeOnly, &SettingsValues::usePasscodeOnly),
    flag(keys::callerIDOn, &SettingsValues::callerIDProtected),
    flag(keys::callerIDAllowAnswer, &SettingsValues::callerIDProtectedAllowAnswer),
    flag(keys::callerIDOnlyForContacts, &SettingsValues::callerIDProtectedForContactsOnly),
    flag(keys::callerIDRemoveFromLockScreen,
         &SettingsValues::callerIDProtectedRemoveFromLockScreen),
    flag(keys::callerIDHideOnAttentionAway, &SettingsValues::hideCallerInfoOnAttentionAway),
    text(keys::callerNameText, &SettingsValues::callerNameText,
         std::string_view("Someone is calling you")),
    text(keys::callerLabelText, &SettingsValues::callerLabelText, std::string_view("Unknown")),
    flag(keys::showNotificationAlert, &SettingsValues::showNotificationAlert),
    flag(keys::remember, &SettingsValues::rememberUnlockSession),
    flag(keys::rememberUntilDeviceLocked, &SettingsValues::rememberUnlockUntilDeviceLocked),
    {keys::rememberTime, SettingsType::real, 0.0, &SettingsValues::rememberUnlockSessionTime},
    flag(keys::applyUnlockSession, &SettingsValues::applyUnlockSessionToAll),
    flag(keys::photosProtected, &SettingsValues::photosProtected),
    flag(keys::quitProtectedFolderOnAppLaunch, &SettingsValues::quitProtectedFolderOnAppLaunch),
    flag(keys::allFoldersProtected, &SettingsValues::allFoldersProtected),
    flag(keys::blurEffectsOn, &SettingsValues::blurEffectsOn),
    {keys::blurEffectType, SettingsType::integer, std::int64_t(0),
     &SettingsValues::blurEffectStyle},
    text(keys::blurEffectsText, &SettingsValues::blurEffectText,
         std::string_view("Protected by Sentrel")),
    items(keys::applications, ItemSet::applications),
    items(keys::notificationApps, ItemSet::notificationApps),
    items(keys::settingsBundles, ItemSet::settings),
    items(keys::flipSwitches, ItemSet::flipSwitches),
    items(keys::controlCenter, ItemSet::controlCenterItems),
    {keys::folders, SettingsType::folderArray, {}, SettingsList::folders},
    {keys::trustedNetworks, SettingsType::stringArray, {}, SettingsList::trustedNetworks},
    flag(keys::enableLogging, &SettingsValues::loggingEnabled),
});

}  // namespace

std::span<const SettingsKey> allSettingsKeys() noexcept {
  return table;
}

const SettingsKey* findSettingsKey(std::string_view name) noexcept {
  const auto found = std::ranges::find(table, name, &SettingsKey::name);
  return found == table.end() ? nullptr : &*found;
}

std::string_view settingsKeyOf(ItemSet set) noexcept {
  return std::ranges::find(table, SettingsField(set), &SettingsKey::field)->name;
}

std::string_view fallbackText(std::string_view name) noexcept {
  const SettingsKey* key = findSettingsKey(name);
  const auto* fallback = key ? std::get_if<std::string_view>(&key->fallback) : nullptr;
  return fallback ? *fallback : std::string_view();
}

}  // namespace sentrel
