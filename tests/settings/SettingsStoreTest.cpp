#include <gtest/gtest.h>

#include "sentrel/bridge/Notifications.h"
#include "sentrel/settings/SNSettings.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;
namespace keys = settings_keys;

class SettingsStore : public TwoProcesses {};

struct FlagCase {
  std::string_view key;
  bool (SNSettings::*get)() const;
  void (SNSettings::*set)(bool);
};

/// The flags whose getters answer them as they stand.
const FlagCase plainFlags[] = {
    {"SentrelEnabled", &SNSettings::isSentrelEnabled, &SNSettings::setSentrelEnabled},
    {"SentrelVibrateOnError", &SNSettings::isVibrateOnError, &SNSettings::setVibrateOnError},
    {"Sentrel3DTouchProtection", &SNSettings::is3DTouchProtected, &SNSettings::set3DTouchProtected},
    {"SentrelCallerIDAllowAnswer", &SNSettings::isCallerIDProtectedAllowAnswer,
     &SNSettings::setCallerIDProtectedAllowAnswer},
    {"SentrelCallerIDOnlyForContacts", &SNSettings::isCallerIDProtectedForContactsOnly,
     &SNSettings::setCallerIDProtectedForContactsOnly},
    {"SentrelShowNoticationAlert", &SNSettings::shouldShowNotificationAlert,
     &SNSettings::setShowNotificationAlert},
    {"SentrelRemember", &SNSettings::isRememberUnlockSession,
     &SNSettings::setRememberUnlockSession},
    {"SentrelRememberUntilDeviceLocked", &SNSettings::isRememberUnlockUntilDeviceLocked,
     &SNSettings::setRememberUnlockUntilDeviceLocked},
    {"SentrelApplyUnlockSession", &SNSettings::shouldApplyUnlockSessionToAll,
     &SNSettings::setApplyUnlockSessionToAll},
    {"SentrelQuitProtectedFolderOnAppLaunch", &SNSettings::shouldQuitProtectedFolderOnAppLaunch,
     &SNSettings::setQuitProtectedFolderOnAppLaunch},
    {"SentrelAllFoldersProtected", &SNSettings::isAllFoldersProtected,
     &SNSettings::setAllFoldersProtected},
    {"SentrelBlurEffectsOn", &SNSettings::isBlurEffectsOn, &SNSettings::setBlurEffectsOn},
    {"SentrelEnableLogging", &SNSettings::isLoggingEnabled, &SNSettings::setLoggingEnabled},
};

TEST_F(SettingsStore, EachFlagFillsItsOwnPropertyAlone) {
  for (const FlagCase& flag : plainFlags) {
    SCOPED_TRACE(flag.key);
    useSettings({{std::string(flag.key), true}});
    for (const FlagCase& other : plainFlags)
      EXPECT_EQ((settings().*other.get)(), other.key == flag.key) << other.key;
    (settings().*flag.set)(false);
    EXPECT_FALSE((settings().*flag.get)());
  }
}

}  // namespace
}  // namespace sentrel
