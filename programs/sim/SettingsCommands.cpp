// The preferences pane. What it writes stays in the memory of the simulated phone.

#include "programs/common/SettingsValue.h"
#include "programs/sim/Command.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sim {
namespace {

Action changing(std::function<void(SNSettings& settings)> change) {
  return [change = std::move(change)](Phone& phone) {
    phone.homeScreen().run([&] { change(SNSettings::sharedSettings()); });
  };
}

Action storing(std::string_view key, std::optional<PropertyList> value) {
  return changing([key, value = std::move(value)](SNSettings& settings) {
    settings.updateSettingsData(key, value, /*postNotification=*/true);
  });
}

Action set(Phone&, const Words& words) {
  const SettingsKey& key = programs::requireSettingsKey(words[0]);
  return storing(key.name,
                 programs::parseSettingsValue(key, Words(words.begin() + 1, words.end())));
}

Action remove(Phone&, const Words& words) {
  return storing(programs::requireSettingsKey(words[0]).name, std::nullopt);
}

Action adding(std::string_view key, const std::string& item) {
  return changing([key, item](SNSettings& settings) {
    const auto stored = settings.valueForKey(key);
    const auto* list = stored ? stored->as<PropertyList::Array>() : nullptr;
    PropertyList::Array items = list ? *list : PropertyList::Array();
    items.emplace_back(item);
    settings.updateSettingsData(key, std::move(items), /*postNotification=*/true);
  });
}

Action protectFolder(const std::string& name) {
  return [name](Phone& phone) {
    for (const auto& folder : phone.device().homeScreen().folders())
      if (folder->displayName() == name)
        phone.homeScreen().run(
            [&] { SNSettings::sharedSettings().addToFolders(SNUtils::folderRecord(*folder)); });
  };
}

Action protectFeature(const std::string& name) {
  constexpr const char* names[] = {"switcher", "arrangement", "respring", "reboot", "photos"};
  constexpr std::string_view keys[] = {settings_keys::appSwitcher, settings_keys::iconArrangement,
                                       settings_keys::respring, settings_keys::reboot,
                                       settings_keys::photosProtected};
  return storing(keys[choiceOf(name, names)], PropertyList(/*value=*/true));
}

Action protect(Phone&, const Words& words) {
  constexpr const char* kinds[] = {"app",     "notifications", "pane",   "switch",
                                   "control", "folder",        "feature"};
  constexpr std::string_view keys[] = {settings_keys::applications, settings_keys::notificationApps,
                                       settings_keys::settingsBundles, settings_keys::flipSwitches,
                                       settings_keys::controlCenter};
  const std::size_t kind = choiceOf(words[0], kinds);
  programs::requireName(words[1]);
  if (kind < std::size(keys)) return adding(keys[kind], words[1]);
  return kind == std::size(keys) ? protectFolder(words[1]) : protectFeature(words[1]);
}

Action passcode(Phone&, const Words& words) {
  constexpr const char* choices[] = {"remove", "set"};
  const bool isSet = choiceOf(words[0], choices) == 1;
  if (isSet != (words.size() == 2)) throw UsageError("expected: passcode set DIGITS, or remove");
  if (isSet) programs::requireTypable(words[1]);
  return changing([isSet, words](SNSettings& settings) {
    isSet ? settings.savePasscode(words[1]) : settings.removePasscode();
  });
}

constexpr Command commands[] = {
    {"set", "KEY VALUE...", "stores a setting with its type; a list takes several values", 1,
     programs::anyNumber, set},
    {"remove", "KEY", "removes a setting", 1, 1, remove},
    {"protect", "KIND ITEM", "KIND: app notifications pane switch control folder feature", 2, 2,
     protect},
    {"passcode", "set DIGITS | remove", "stores or removes this system's own passcode", 1, 2,
     passcode},
};

}  // namespace

Table<Action> settingsCommands() {
  return commands;
}

}  // namespace sentrel::sim
