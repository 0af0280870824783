#include "host/SettingsReloader.h"

#include "sentrel/Process.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel::host {

SettingsReloader::SettingsReloader()
    : observation_(Process::current().platform().darwinCenter->addObserver(
          std::string(notifications::settingsChanged),
          [](const Notification&) { SNSettings::sharedSettings().reloadSettings(); })) {}

}  // namespace sentrel::host
