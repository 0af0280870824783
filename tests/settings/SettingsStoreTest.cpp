#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <set>

#include "sentrel/bridge/Notifications.h"
#include "sentrel/settings/SNSettings.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;
using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

class SettingsStore : public TwoProcesses {
 protected:
  std::size_t changesPosted() { return posted("com.quorvin.sentrelSettingsChanged"); }
};

struct FlagCase {
  std::string_view key;
  bool (SNSettings::*get)() const;
  void (SNSettings::*set)(bool);
};

/// The flags whose getters answer them as they stand.
constexpr FlagCase plainFlags[] = {
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

TEST_F(SettingsStore, ReadsFlagsOfAnyTypeLeniently) {
  const std::pair<PropertyList, bool> readings[] = {
      {1, true},      {0, false},      {0.5, true}, {"yes", true},
      {"off", false}, {"12abc", true}, {"", false}, {Array{1}, false}};
  for (const auto& [value, expected] : readings) {
    useSettings({{"SentrelEnabled", value}});
    EXPECT_EQ(settings().isSentrelEnabled(), expected) << describe(value);
  }
}

TEST_F(SettingsStore, NumbersAndTextsFallBackWhenAbsentOrOfAWrongType) {
  useSettings({{"SentrelRememberTime", 0.1},
               {"SentrelBlurEffectType", 3.9},
               {"SentrelPasscode", "stored"},
               {"SentrelCallerIDCallerNameText", ""},
               {"SentrelCallerIDCallerLabelText", "Label"},
               {"SentrelBlurEffectsText", "Hidden"}});
  EXPECT_EQ(settings().rememberUnlockSessionTime(), static_cast<double>(0.1F));
  EXPECT_EQ(settings().blurEffectStyle(), 3);
  EXPECT_EQ(settings().passcode(), "stored");
  EXPECT_EQ(settings().callerNameText(), "");
  EXPECT_EQ(settings().callerLabelText(), "Label");
  EXPECT_EQ(settings().blurEffectText(), "Hidden");

  useSettings({{"SentrelRememberTime", Array{5}},
               {"SentrelBlurEffectType", Dictionary()},
               {"SentrelPasscode", 1234},
               {"SentrelCallerIDCallerNameText", true},
               {"SentrelCallerIDCallerLabelText", 1.5},
               {"SentrelBlurEffectsText", Array{"Hidden"}}});
  springBoard->mainBundle().translate("Unknown", "Unbekannt");
  springBoard->mainBundle().translate("Protected by Sentrel", "Geschützt");
  EXPECT_EQ(settings().rememberUnlockSessionTime(), 0);
  EXPECT_EQ(settings().blurEffectStyle(), 0);
  EXPECT_EQ(settings().passcode(), std::nullopt);
  EXPECT_EQ(settings().callerNameText(), "Someone is calling you");
  EXPECT_EQ(settings().callerLabelText(), "Unbekannt");
  EXPECT_EQ(settings().blurEffectText(), "Geschützt");
}

struct SetCase {
  std::string_view key;
  const ProtectedItems& (SNSettings::*get)() const;
  bool (SNSettings::*add)(std::string_view);
  bool (SNSettings::*remove)(std::string_view);
};

constexpr SetCase sets[] = {
    {"SentrelApplications", &SNSettings::protectedApplications, &SNSettings::addToProtectedApps,
     &SNSettings::removeFromProtectedApps},
    {"SentrelNCApps", &SNSettings::protectedNotificationApps,
     &SNSettings::addToNoticationCenterApps, &SNSettings::removeFromNoticationCenterApps},
    {"SentrelSettingsBundles", &SNSettings::protectedSettings, &SNSettings::addToSettingsSpecifiers,
     &SNSettings::removeFromSettingsSpecifiers},
    {"SentrelFlipSwitches", &SNSettings::protectedFlipSwitches, &SNSettings::addToFlipSwitches,
     &SNSettings::removeFromFlipSwitches},
    {"SentrelControlCenter", &SNSettings::protectedControlCenterItems,
     &SNSettings::addToControlCenterItems, &SNSettings::removeFromControlCenterItems},
};

/// The members of a set but for the system's own settings pane, which is always in one of them.
std::set<std::string> othersIn(const ProtectedItems& items) {
  std::set<std::string> members(items.begin(), items.end());
  members.erase("Sentrel");
  return members;
}

TEST_F(SettingsStore, EachSetIsReplacedByItsOwnListAtEveryLoad) {
  for (const SetCase& set : sets) {
    SCOPED_TRACE(set.key);
    useSettings({{std::string(set.key), Array{"a", "b", "a", 5, "b"}}});
    for (const SetCase& other : sets) {
      const std::set<std::string> expected =
          other.key == set.key ? std::set<std::string>{"a", "b"} : std::set<std::string>();
      EXPECT_EQ(othersIn((settings().*other.get)()), expected) << other.key;
    }
    useSettings({{std::string(set.key), "a"}});
    EXPECT_THAT(othersIn((settings().*set.get)()), ElementsAre());
  }
}

TEST_F(SettingsStore, EachWriterChangesMemoryAndItsListInTheFile) {
  for (const SetCase& set : sets) {
    SCOPED_TRACE(set.key);
    useSettings({{std::string(set.key), Array{"a", 5}}, {"Untouched", 1}});
    const std::size_t before = changesPosted();
    EXPECT_TRUE((settings().*set.add)("b"));
    EXPECT_TRUE((settings().*set.add)("b"));
    EXPECT_TRUE((settings().*set.remove)("a"));
    EXPECT_TRUE((settings().*set.remove)("never there"));
    EXPECT_EQ(changesPosted(), before + 4);
    EXPECT_THAT(othersIn((settings().*set.get)()), ElementsAre("b"));
    Array written = *find<Array>(settingsFile(), set.key);
    std::erase(written, PropertyList("Sentrel"));
    EXPECT_THAT(written, UnorderedElementsAre(PropertyList("b"), PropertyList(5)));
    EXPECT_EQ(settingsFile().at("Untouched"), PropertyList(1));
  }
}

TEST_F(SettingsStore, OwnPaneIsAlwaysProtectedAndOwnSwitchNever) {
  const std::string ownSwitch = "com.quorvin.sentrel.flipswitch";
  springBoard->mainBundle().translate("Sentrel", "Wächter");
  const auto holds = [&] {
    return settings().protectedSettings().contains("Wächter") &&
           !settings().protectedFlipSwitches().contains(ownSwitch);
  };
  useSettings({{"SentrelFlipSwitches", Array{ownSwitch, "other"}}});
  EXPECT_TRUE(holds());
  EXPECT_TRUE(settings().protectedFlipSwitches().contains("other"));

  settings().removeFromSettingsSpecifiers("Wächter");
  settings().addToFlipSwitches(ownSwitch);
  EXPECT_TRUE(holds());
  EXPECT_EQ(settingsFile().at("SentrelSettingsBundles"), PropertyList(Array{"Wächter"}));
  EXPECT_EQ(settingsFile().at("SentrelFlipSwitches"), PropertyList(Array{"other"}));

  settings().setProtectedSettings(ProtectedItems());
  settings().setProtectedFlipSwitches(ProtectedItems(Array{ownSwitch}));
  EXPECT_TRUE(holds());

  device.files().remove(std::string(settingsFilePath));
  settings().reloadSettings();
  EXPECT_TRUE(holds());
}

TEST_F(SettingsStore, ReloadNeverClearsFoldersAndNetworks) {
  const Array folders{Dictionary{{"SentrelFolderDisplayName", "Work"}}};
  useSettings({{"SentrelFolders", folders},
               {"SentrelTrustedNetworks", Array{"home", "home"}},
               {"SentrelApplications", Array{"a"}}});
  useSettings({});
  EXPECT_EQ(settings().enabledFolders(), folders);
  EXPECT_EQ(settings().wifiNetworks(), (Array{"home", "home"}));
  EXPECT_EQ(settings().protectedApplications().size(), 0U);
  useSettings({{"SentrelFolders", Array()}, {"SentrelTrustedNetworks", "no list"}});
  EXPECT_EQ(settings().enabledFolders(), Array());
  EXPECT_EQ(settings().wifiNetworks(), (Array{"home", "home"}));
}

TEST_F(SettingsStore, WriterStoresAndRemovesAndPostsOnlyOnSuccess) {
  useSettings({{"Other", "kept"}});
  EXPECT_TRUE(settings().updateSettingsData("New", 1.5, /*postNotification=*/false));
  EXPECT_EQ(changesPosted(), 0U);
  EXPECT_TRUE(settings().updateSettingsData("Other", std::nullopt, /*postNotification=*/true));
  EXPECT_EQ(changesPosted(), 1U);
  EXPECT_EQ(settingsFile(), (Dictionary{{"New", 1.5}}));

  device.files().setWritesFail(true);
  EXPECT_FALSE(settings().addToProtectedApps("a"));
  EXPECT_TRUE(settings().protectedApplications().contains("a"));
  EXPECT_EQ(changesPosted(), 1U);
}

TEST_F(SettingsStore, MissingFileIsNeverCreated) {
  EXPECT_FALSE(settings().addToProtectedApps("a"));
  EXPECT_FALSE(settings().addToWiFiNetwork("home"));
  EXPECT_FALSE(settings().savePasscode("1234"));
  settings().toggleValue("SentrelEnabled");
  EXPECT_FALSE(device.files().fileExists(std::string(settingsFilePath)));
  EXPECT_EQ(changesPosted(), 0U);
  EXPECT_TRUE(settings().isAppProtected("a", /*ignoreAllOther=*/true));
}

TEST_F(SettingsStore, ToggleNegatesYesAndNoAndLeavesTheRest) {
  struct Toggle {
    PropertyList before;
    PropertyList after;
  };
  const Toggle toggles[] = {{true, 0},
                            {false, 1},
                            {1, 0},
                            {0, 1},
                            {1.0, 0},
                            {2, 2},
                            {0.5, 0.5},
                            {-1, -1},
                            {"1", "1"},
                            {Array(), Array()},
                            {PropertyList::Data{1}, PropertyList::Data{1}}};
  for (const Toggle& toggle : toggles) {
    SCOPED_TRACE(describe(toggle.before));
    useSettings({{"SentrelEnabled", toggle.before}});
    const bool inMemory = settings().isSentrelEnabled();
    const std::size_t before = changesPosted();
    settings().toggleValue("SentrelEnabled");
    EXPECT_EQ(settings().valueForKey("SentrelEnabled"), toggle.after) << "fresh from the file";
    EXPECT_EQ(changesPosted() - before, toggle.before == toggle.after ? 0U : 1U);
    EXPECT_EQ(settings().isSentrelEnabled(), inMemory);
  }
  settings().toggleValue("Absent");
  EXPECT_EQ(settings().valueForKey("Absent"), std::nullopt);
}

TEST_F(SettingsStore, KeepsWhatItKnowsAndWritesNothingWhileTheFileCannotBeRead) {
  useSettings({{"SentrelEnabled", true}, {"SentrelApplications", Array{"a"}}});
  device.files().put(std::string(settingsFilePath), {{"SentrelApplications", Array{"b"}}});
  device.files().setReadsFail(true);
  EXPECT_FALSE(settings().reloadSettings());
  device.files().setReadsFail(false);
  EXPECT_TRUE(settings().isAppProtected("a"));
  EXPECT_FALSE(settings().addToProtectedApps("c")) << "b would be lost";
  EXPECT_TRUE(settings().reloadSettings());
  EXPECT_TRUE(settings().addToProtectedApps("c"));
  EXPECT_EQ(settingsFile().at("SentrelApplications"), PropertyList(Array{"b", "c"}));
  device.files().setLocked(true);
  EXPECT_FALSE(settings().toggleValue("SentrelEnabled"));
  EXPECT_FALSE(settings().updateSettingsData("key", true, /*postNotification=*/true));
}

TEST_F(SettingsStore, EverythingIsLockedUntilTheFileWasRead) {
  device.files().setReadsFail(true);
  device.wifi().joined = "home";
  device.files().touch("/Library/MobileSubstrate/DynamicLibraries/Flipswitch.dylib");
  device.files().touch("/Library/MobileSubstrate/DynamicLibraries/FlipControlCenter.dylib");
  const auto late = device.launch("com.example.late");
  const PropertyList folder(Dictionary{{"SentrelFolderDisplayName", "Work"}});
  const auto locks = [&folder](const SNSettings& it) {
    return std::vector<bool>{it.isAppProtected(),
                             it.isAppProtected("x", /*ignoreAllOther=*/true),
                             it.isNotificationsAppProtected("x"),
                             it.isSpecifierProtected("x"),
                             it.isFlipSwitchProtected("x"),
                             it.isControlCenterItemProtected("x"),
                             it.isSystemServiceProtected("x"),
                             it.isAppArrangementProtected(),
                             it.isAppSwitcherProtected(),
                             it.isRespringProtected(),
                             it.isRebootProtected(),
                             it.isPhotosProtected(),
                             it.isCallerIDProtected(),
                             it.isCallerIDProtectedRemoveFromLockScreen(),
                             it.isHideCallerInfoOnAttentionAway(),
                             it.hasFolder(folder),
                             it.isAllFoldersProtected(),
                             it.is3DTouchProtected()};
  };
  late->run([&] {
    SNSettings& unknown = SNSettings::sharedSettings();
    EXPECT_THAT(locks(unknown), Each(true));
    EXPECT_FALSE(unknown.isUnlockWithAppleWatch() || unknown.isRememberUnlockSession() ||
                 unknown.isCurrentlyConnectedToTrustedNetwork() || unknown.validatePasscode(""));
    device.files().setReadsFail(false);
    EXPECT_TRUE(unknown.reloadSettings()) << "there is no file";
    EXPECT_THAT(locks(unknown), Each(false));
  });
}

}  // namespace
}  // namespace sentrel
