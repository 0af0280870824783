#include <utility>

#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel {
namespace {

/// The system's own on and off switch: never protected.
constexpr std::string_view ownFlipSwitch = "com.quorvin.sentrel.flipswitch";

}  // namespace

void SNSettings::setItems(ItemSet set, ProtectedItems value) {
  items(set) = std::move(value);
  itemsChanged(set);
}

bool SNSettings::addItem(ItemSet set, std::string_view item) {
  items(set).add(item);
  return writeItems(set);
}

bool SNSettings::removeItem(ItemSet set, std::string_view item) {
  items(set).remove(item);
  return writeItems(set);
}

bool SNSettings::writeItems(ItemSet set) {
  itemsChanged(set);
  return updateSettingsData(settingsKeyOf(set), items(set).asArray(), /*postNotification=*/true);
}

void SNSettings::itemsChanged(ItemSet set) {
  if (set == ItemSet::settings) {
    ownSettingsPane_ = platform_.mainBundle->localizedString("Sentrel");
    items(set).add(ownSettingsPane_);
  }
  if (set == ItemSet::flipSwitches) items(set).remove(ownFlipSwitch);
  if (set == ItemSet::applications)
    protectedServices_ = ProtectedServices(items(set), *platform_.caseMapping);
}

bool SNSettings::addToProtectedApps(std::string_view bundleIdentifier) {
  return addItem(ItemSet::applications, bundleIdentifier);
}

bool SNSettings::removeFromProtectedApps(std::string_view bundleIdentifier) {
  return removeItem(ItemSet::applications, bundleIdentifier);
}

bool SNSettings::addToNoticationCenterApps(std::string_view bundleIdentifier) {
  return addItem(ItemSet::notificationApps, bundleIdentifier);
}

bool SNSettings::removeFromNoticationCenterApps(std::string_view bundleIdentifier) {
  return removeItem(ItemSet::notificationApps, bundleIdentifier);
}

bool SNSettings::addToSettingsSpecifiers(std::string_view paneName) {
  return addItem(ItemSet::settings, paneName);
}

bool SNSettings::removeFromSettingsSpecifiers(std::string_view paneName) {
  return removeItem(ItemSet::settings, paneName);
}

bool SNSettings::addToFlipSwitches(std::string_view switchIdentifier) {
  return addItem(ItemSet::flipSwitches, switchIdentifier);
}

bool SNSettings::removeFromFlipSwitches(std::string_view switchIdentifier) {
  return removeItem(ItemSet::flipSwitches, switchIdentifier);
}

bool SNSettings::addToControlCenterItems(std::string_view itemIdentifier) {
  return addItem(ItemSet::controlCenterItems, itemIdentifier);
}

bool SNSettings::removeFromControlCenterItems(std::string_view itemIdentifier) {
  return removeItem(ItemSet::controlCenterItems, itemIdentifier);
}

}  // namespace sentrel
