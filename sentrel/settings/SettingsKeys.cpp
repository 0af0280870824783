#include "sentrel/settings/SettingsKeys.h"

#include <algorithm>
#include <array>

namespace sentrel {
namespace {

constexpr std::array keys = std::to_array<SettingsKey>({
    {settings_keys::enabled, SettingsType::boolean},
    {settings_keys::vibrateOnError, SettingsType::boolean},
    {settings_keys::iconArrangement, SettingsType::boolean},
    {settings_keys::protection3DTouch, SettingsType::boolean},
    {settings_keys::appSwitcher, SettingsType::boolean},
    {settings_keys::respring, SettingsType::boolean},
    {settings_keys::reboot, SettingsType::boolean},
    {settings_keys::unlockWithWatch, SettingsType::boolean},
    {settings_keys::passcode, SettingsType::string},
    {settings_keys::usePasscodeOnly, SettingsType::boolean},
    {settings_keys::callerIDOn, SettingsType::boolean},
    {settings_keys::callerIDAllowAnswer, SettingsType::boolean},
    {settings_keys::callerIDOnlyForContacts, SettingsType::boolean},
    {settings_keys::callerIDRemoveFromLockScreen, SettingsType::boolean},
    {settings_keys::callerIDHideOnAttentionAway, SettingsType::boolean},
    {settings_keys::callerNameText, SettingsType::string},
    {settings_keys::callerLabelText, SettingsType::string},
    {settings_keys::showNotificationAlert, SettingsType::boolean},
    {settings_keys::remember, SettingsType::boolean},
    {settings_keys::rememberUntilDeviceLocked, SettingsType::boolean},
    {settings_keys::rememberTime, SettingsType::real},
    {settings_keys::applyUnlockSession, SettingsType::boolean},
    {settings_keys::photosProtected, SettingsType::boolean},
    {settings_keys::quitProtectedFolderOnAppLaunch, SettingsType::boolean},
    {settings_keys::allFoldersProtected, SettingsType::boolean},
    {settings_keys::blurEffectsOn, SettingsType::boolean},
    {settings_keys::blurEffectType, SettingsType::integer},
    {settings_keys::blurEffectsText, SettingsType::string},
    {settings_keys::applications, SettingsType::stringArray},
    {settings_keys::notificationApps, SettingsType::stringArray},
    {settings_keys::settingsBundles, SettingsType::stringArray},
    {settings_keys::flipSwitches, SettingsType::stringArray},
    {settings_keys::controlCenter, SettingsType::stringArray},
    {settings_keys::folders, SettingsType::folderArray},
    {settings_keys::trustedNetworks, SettingsType::stringArray},
    {settings_keys::enableLogging, SettingsType::boolean},
});

}  // namespace

std::span<const SettingsKey> allSettingsKeys() noexcept {
  return keys;
}

const SettingsKey* findSettingsKey(std::string_view name) noexcept {
  const auto found = std::ranges::find(keys, name, &SettingsKey::name);
  return found == keys.end() ? nullptr : &*found;
}

}  // namespace sentrel
