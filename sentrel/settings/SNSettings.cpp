#include "sentrel/settings/SNSettings.h"

#include <utility>

#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel {
namespace {

namespace keys = settings_keys;

// What an entry that the file holds, or null, reads as; each as leniently as its type allows.

void load(bool& value, const PropertyList* stored, const SettingsDefault& fallback) {
  value = stored ? stored->boolValue() : std::get<bool>(fallback);
}

/// In single precision, as it always was.
void load(double& value, const PropertyList* stored, const SettingsDefault& fallback) {
  value = stored ? stored->floatValue() : std::get<double>(fallback);
}

void load(std::int64_t& value, const PropertyList* stored, const SettingsDefault& fallback) {
  value = stored ? stored->integerValue() : std::get<std::int64_t>(fallback);
}

/// What stands for a text that is not there is chosen when it is shown.
void load(std::optional<std::string>& value, const PropertyList* stored, const SettingsDefault&) {
  const auto* text = stored ? stored->as<std::string>() : nullptr;
  value = text ? std::optional(*text) : std::nullopt;
}

}  // namespace

SNSettings::SNSettings(Platform& platform, Bridge& bridge, UnlockSessions& sessions,
                       SNWiFiManager& wifiManager)
    : platform_(platform), bridge_(bridge), sessions_(sessions), wifiManager_(wifiManager) {
  loadSettings();
}

bool SNSettings::loadSettings() {
  auto reading = platform_.propertyListFiles->readDictionary(std::string(settingsFilePath));
  isBehind_ = reading.outcome == DictionaryReading::Outcome::couldNot;
  if (!isBehind_) loadSettings(std::move(reading.dictionary).value_or(PropertyList::Dictionary()));
  return !isBehind_;
}

void SNSettings::loadSettings(PropertyList::Dictionary file) {
  flipSwitchInstalled_ = false;
  for (const SettingsKey& key : allSettingsKeys()) {
    const auto entry = file.find(key.name);
    PropertyList* stored = entry == file.end() ? nullptr : &entry->second;
    std::visit([&](const auto& field) { load(field, stored, key.fallback); }, key.field);
  }
  isUnknown_ = isBehind_ = false;
}

template <class T>
void SNSettings::load(T SettingsValues::*field, PropertyList* stored,
                      const SettingsDefault& fallback) {
  sentrel::load(values_.*field, stored, fallback);
}

void SNSettings::load(ItemSet set, PropertyList* stored, const SettingsDefault&) {
  auto* elements = stored ? stored->as<PropertyList::Array>() : nullptr;
  setItems(set, elements ? ProtectedItems(std::move(*elements)) : ProtectedItems());
}

/// What the file does not hold stays in memory.
void SNSettings::load(SettingsList list, PropertyList* stored, const SettingsDefault&) {
  auto* entries = stored ? stored->as<PropertyList::Array>() : nullptr;
  if (!entries) return;
  if (list == SettingsList::folders)
    setEnabledFolders(std::move(*entries));
  else
    setWifiNetworks(std::move(*entries));
}

bool SNSettings::updateSettingsData(std::string_view key, std::optional<PropertyList> data,
                                    bool postNotification) {
  const std::string path(settingsFilePath);
  PropertyListFiles& files = *platform_.propertyListFiles;
  const auto alone = isUpToDate() ? files.lock(path) : nullptr;
  auto file = alone ? files.readDictionary(path).dictionary : std::nullopt;
  if (!file) return false;
  if (data)
    file->insert_or_assign(std::string(key), std::move(*data));
  else
    file->erase(std::string(key));
  if (!files.writeDictionary(path, *file)) return false;
  if (postNotification) bridge_.postDarwinNotification(notifications::settingsChanged);
  return true;
}

bool SNSettings::toggleValue(std::string_view key) {
  const auto alone = platform_.propertyListFiles->lock(std::string(settingsFilePath));
  const auto stored = alone ? valueForKey(key) : std::nullopt;
  if (!stored || !stored->isNumber()) return false;
  const double number = stored->doubleValue();
  return (number == 0 || number == 1) &&
         updateSettingsData(key, PropertyList(number == 0 ? 1 : 0), /*postNotification=*/true);
}

std::optional<PropertyList> SNSettings::valueForKey(std::string_view key) const {
  const auto file =
      platform_.propertyListFiles->readDictionary(std::string(settingsFilePath)).dictionary;
  const PropertyList* stored = file ? find(*file, key) : nullptr;
  return stored ? std::optional(*stored) : std::nullopt;
}

std::string SNSettings::shown(const std::optional<std::string>& text, std::string_view key) const {
  if (text) return *text;
  return std::string(platform_.mainBundle->localizedString(fallbackText(key)));
}

std::string SNSettings::callerNameText() const {
  return shown(values_.callerNameText, keys::callerNameText);
}

std::string SNSettings::callerLabelText() const {
  return shown(values_.callerLabelText, keys::callerLabelText);
}

std::string SNSettings::blurEffectText() const {
  return shown(values_.blurEffectText, keys::blurEffectsText);
}

std::string SNSettings::sentrelLabelText() const {
  return shown(std::nullopt, keys::blurEffectsText);
}

}  // namespace sentrel
