#include "programs/sentrelctl/SettingsFile.h"

#include <cstdio>
#include <utility>
#include <variant>

#include "device/storage/PlistFiles.h"
#include "programs/common/CommandLine.h"
#include "sentrel/Process.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel::sentrelctl {

using programs::ProgramError;

namespace {

/// A set of protected items, by the properties that keep what always holds for it.
struct ItemSet {
  std::string_view key;
  const ProtectedItems& (SNSettings::*items)() const noexcept;
  void (SNSettings::*setItems)(ProtectedItems);
};

constexpr ItemSet itemSets[] = {
    {settings_keys::applications, &SNSettings::protectedApplications,
     &SNSettings::setProtectedApplications},
    {settings_keys::notificationApps, &SNSettings::protectedNotificationApps,
     &SNSettings::setProtectedNotificationApps},
    {settings_keys::settingsBundles, &SNSettings::protectedSettings,
     &SNSettings::setProtectedSettings},
    {settings_keys::flipSwitches, &SNSettings::protectedFlipSwitches,
     &SNSettings::setProtectedFlipSwitches},
    {settings_keys::controlCenter, &SNSettings::protectedControlCenterItems,
     &SNSettings::setProtectedControlCenterItems},
};

/// Says which items are in the one set alone.
void noteDifference(const ProtectedItems& in, const ProtectedItems& notIn, const char* what) {
  for (const std::string& item : in)
    if (!notIn.contains(item)) std::fprintf(stderr, "sentrelctl: %s %s\n", item.c_str(), what);
}

std::optional<PropertyList> asSet(std::string_view key, std::optional<PropertyList> value) {
  for (const ItemSet& set : itemSets) {
    if (set.key != key || !value) continue;
    SNSettings& settings = SNSettings::sharedSettings();
    const ProtectedItems wanted(*value->as<PropertyList::Array>());
    (settings.*set.setItems)(wanted);
    const ProtectedItems& kept = (settings.*set.items)();
    noteDifference(wanted, kept, "is never protected and was left out");
    noteDifference(kept, wanted, "is always protected and was put in");
    return kept.asArray();
  }
  return value;
}

}  // namespace

std::string settingsFileOnThisMachine(const Context& context) {
  return context.root().hostPath(std::string(settingsFilePath)).value_or("");
}

PropertyList::Dictionary readSettingsFile(const Context& context) {
  const std::string path = settingsFileOnThisMachine(context);
  auto reading = storage::readDictionaryFile(path);
  if (auto* file = std::get_if<PropertyList::Dictionary>(&reading)) return std::move(*file);
  const auto& fault = std::get<storage::PropertyListFault>(reading);
  const bool missing = fault.kind == storage::PropertyListFault::Kind::missing;
  throw ProgramError(path + ": " + storage::describe(fault) +
                     (missing ? "; make it with \"sentrelctl create\"" : ""));
}

SettingsChange::SettingsChange(const Context& context)
    : alone_(Process::current().platform().propertyListFiles->lock(std::string(settingsFilePath))) {
  readSettingsFile(context);
  const std::string path = settingsFileOnThisMachine(context);
  if (!alone_)
    throw ProgramError(path +
                       ": another program has kept its folder for two seconds, or it could " +
                       "not be locked; nothing is changed");
  if (!SNSettings::sharedSettings().reloadSettings())
    throw ProgramError(path + ": it could not be read; nothing is changed");
  context.changesFile = true;
}

PropertyList::Array requireListOrNone(const Context& context, std::string_view key) {
  const auto file = readSettingsFile(context);
  const PropertyList* value = find(file, key);
  if (!value) return {};
  if (const auto* elements = value->as<PropertyList::Array>()) return *elements;
  throw ProgramError(std::string(key) + " holds " + describe(*value) +
                     ", which is no list and would be lost; set or remove it first");
}

void changeSetting(const Context& context, std::string_view key,
                   std::optional<PropertyList> value) {
  if (!SNSettings::sharedSettings().updateSettingsData(key, asSet(key, std::move(value)),
                                                       /*postNotification=*/true))
    throw ProgramError(settingsFileOnThisMachine(context) +
                       ": could not be written with that value; it is as it was");
}

void requireWritten(bool written) {
  if (!written) throw ProgramError("the settings file could not be written; it is as it was");
}

}  // namespace sentrel::sentrelctl
