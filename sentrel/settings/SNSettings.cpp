#include "sentrel/settings/SNSettings.h"

#include <utility>

#include "sentrel/Process.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel {
namespace {

namespace keys = settings_keys;

template <class T>
struct Entry {
  std::string_view key;
  T SettingsValues::*value;
};

constexpr Entry<bool> flags[] = {
    {keys::enabled, &SettingsValues::sentrelEnabled},
    {keys::vibrateOnError, &SettingsValues::vibrateOnError},
    {keys::iconArrangement, &SettingsValues::appArrangementProtected},
    {keys::protection3DTouch, &SettingsValues::is3DTouchProtected},
    {keys::appSwitcher, &SettingsValues::appSwitcherProtected},
    {keys::respring, &SettingsValues::respringProtected},
    {keys::reboot, &SettingsValues::rebootProtected},
    {keys::unlockWithWatch, &SettingsValues::unlockWithAppleWatch},
    {keys::usePasscodeOnly, &SettingsValues::usePasscodeOnly},
    {keys::callerIDOn, &SettingsValues::callerIDProtected},
    {keys::callerIDAllowAnswer, &SettingsValues::callerIDProtectedAllowAnswer},
    {keys::callerIDOnlyForContacts, &SettingsValues::callerIDProtectedForContactsOnly},
    {keys::callerIDRemoveFromLockScreen, &SettingsValues::callerIDProtectedRemoveFromLockScreen},
    {keys::callerIDHideOnAttentionAway, &SettingsValues::hideCallerInfoOnAttentionAway},
    {keys::showNotificationAlert, &SettingsValues::showNotificationAlert},
    {keys::remember, &SettingsValues::rememberUnlockSession},
    {keys::rememberUntilDeviceLocked, &SettingsValues::rememberUnlockUntilDeviceLocked},
    {keys::applyUnlockSession, &SettingsValues::applyUnlockSessionToAll},
    {keys::photosProtected, &SettingsValues::photosProtected},
    {keys::quitProtectedFolderOnAppLaunch, &SettingsValues::quitProtectedFolderOnAppLaunch},
    {keys::allFoldersProtected, &SettingsValues::allFoldersProtected},
    {keys::blurEffectsOn, &SettingsValues::blurEffectsOn},
    {keys::enableLogging, &SettingsValues::loggingEnabled},
};

constexpr Entry<std::optional<std::string>> texts[] = {
    {keys::passcode, &SettingsValues::passcode},
    {keys::callerNameText, &SettingsValues::callerNameText},
    {keys::callerLabelText, &SettingsValues::callerLabelText},
    {keys::blurEffectsText, &SettingsValues::blurEffectText},
};

std::optional<std::string> textOf(const PropertyList* value) {
  const auto* text = value ? value->as<std::string>() : nullptr;
  return text ? std::optional(*text) : std::nullopt;
}

}  // namespace

SNSettings::SNSettings(Platform& platform, UnlockSessions& sessions, SNWiFiManager& wifiManager)
    : platform_(platform), sessions_(sessions), wifiManager_(wifiManager) {
  loadSettings();
}

SNSettings& SNSettings::sharedSettings() {
  return Process::current().settings();
}

void SNSettings::loadSettings() {
  const auto file = platform_.propertyListFiles->readDictionary(std::string(settingsFilePath));
  loadSettings(file ? *file : PropertyList::Dictionary());
}

void SNSettings::loadSettings(const PropertyList::Dictionary& file) {
  flipSwitchInstalled_.reset();
  loadValues(file);
  loadLists(file);
}

void SNSettings::loadValues(const PropertyList::Dictionary& file) {
  for (const auto& [key, value] : flags) {
    const PropertyList* stored = find(file, key);
    values_.*value = stored && stored->boolValue();
  }
  for (const auto& [key, value] : texts)
    values_.*value = textOf(find(file, key));
  const PropertyList* minutes = find(file, keys::rememberTime);
  values_.rememberUnlockSessionTime = minutes ? minutes->floatValue() : 0;
  const PropertyList* style = find(file, keys::blurEffectType);
  values_.blurEffectStyle = style ? style->integerValue() : 0;
}

void SNSettings::loadLists(const PropertyList::Dictionary& file) {
  for (std::size_t i = 0; i < itemSetCount; ++i) {
    const auto set = static_cast<ItemSet>(i);
    setItems(set, ProtectedItems(find(file, itemSetKey(set))));
  }
  // What the file does not hold stays in memory.
  if (const auto* folders = find<PropertyList::Array>(file, keys::folders))
    setEnabledFolders(*folders);
  if (const auto* networks = find<PropertyList::Array>(file, keys::trustedNetworks))
    setWifiNetworks(*networks);
}

bool SNSettings::updateSettingsData(std::string_view key, std::optional<PropertyList> data,
                                    bool postNotification) {
  const std::string path(settingsFilePath);
  auto file = platform_.propertyListFiles->readDictionary(path);
  if (!file) return false;
  if (data)
    file->insert_or_assign(std::string(key), std::move(*data));
  else
    file->erase(std::string(key));
  if (!platform_.propertyListFiles->writeDictionary(path, *file)) return false;
  if (postNotification) SNUtils::postDarwinNotification(notifications::settingsChanged);
  return true;
}

void SNSettings::toggleValue(std::string_view key) {
  const auto stored = valueForKey(key);
  if (!stored || !stored->isNumber()) return;
  const double number = stored->doubleValue();
  if (number == 0 || number == 1)
    updateSettingsData(key, PropertyList(number == 0 ? 1 : 0), /*postNotification=*/true);
}

std::optional<PropertyList> SNSettings::valueForKey(std::string_view key) const {
  const auto file = platform_.propertyListFiles->readDictionary(std::string(settingsFilePath));
  const PropertyList* stored = file ? find(*file, key) : nullptr;
  return stored ? std::optional(*stored) : std::nullopt;
}

bool SNSettings::shouldUsePasscodeOnly() const noexcept {
  return values_.usePasscodeOnly && values_.passcode && !values_.passcode->empty();
}

std::string SNSettings::callerNameText() const {
  if (values_.callerNameText) return *values_.callerNameText;
  return std::string(platform_.mainBundle->localizedString("Someone is calling you"));
}

std::string SNSettings::callerLabelText() const {
  if (values_.callerLabelText) return *values_.callerLabelText;
  return std::string(platform_.mainBundle->localizedString("Unknown"));
}

std::string SNSettings::blurEffectText() const {
  return values_.blurEffectText ? *values_.blurEffectText : sentrelLabelText();
}

std::string SNSettings::sentrelLabelText() const {
  return std::string(platform_.mainBundle->localizedString("Protected by Sentrel"));
}

}  // namespace sentrel
