#include <gtest/gtest.h>

#include <functional>

#include "sentrel/settings/SNSettings.h"
#include "tests/support/CountedAllocations.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

using Array = PropertyList::Array;

class ProtectionQuestions : public TwoProcesses {
 protected:
  /// Everything protected, sessions remembered, so that every question runs all its steps.
  ProtectionQuestions() {
    for (const char* name : {"Flipswitch", "FlipControlCenter"})
      device.files().touch("/Library/MobileSubstrate/DynamicLibraries/" + std::string(name) +
                           ".dylib");
    PropertyList::Dictionary file{{"SentrelTrustedNetworks", Array{"home"}},
                                  {"SentrelRememberTime", 5}};
    for (const char* key :
         {"SentrelEnabled", "SentrelRemember", "SentrelAppSwitcher", "SentrelCallerIDOn",
          "SentrelCallerIDRemoveFromLockScreen", "SentrelCallerIDHideOnAttentionAway",
          "SentrelIconArrangement", "SentrelRespring", "SentrelReboot", "SentrelUnlockWithWatch"})
      file.emplace(key, true);
    Array items{item, "com.apple.mobileslideshow", std::string(springBoardBundleIdentifier)};
    for (int i = 0; i < 300; ++i)
      items.emplace_back("com.example.application" + std::to_string(i));
    for (const char* key : {"SentrelApplications", "SentrelNCApps", "SentrelSettingsBundles",
                            "SentrelFlipSwitches", "SentrelControlCenter"})
      file.emplace(key, items);
    useSettings(std::move(file));
  }

  const std::string item = "com.example.an.application.with.a.long.name";
  const std::string accented = item + ".école";
};

TEST_F(ProtectionQuestions, AllocateNothingOnceWarm) {
  struct Question {
    const char* name;
    std::function<bool(const SNSettings&)> ask;
  };
  const Question questions[] = {
      {"own app", [](const SNSettings& s) { return s.isAppProtected(); }},
      {"app", [this](const SNSettings& s) { return s.isAppProtected(item); }},
      {"notifications",
       [this](const SNSettings& s) { return s.isNotificationsAppProtected(item); }},
      {"settings pane", [this](const SNSettings& s) { return s.isSpecifierProtected(item); }},
      {"switch", [this](const SNSettings& s) { return s.isFlipSwitchProtected(item); }},
      {"control centre",
       [this](const SNSettings& s) { return s.isControlCenterItemProtected(item); }},
      {"service", [this](const SNSettings& s) { return s.isSystemServiceProtected(item); }},
      {"service that is not ASCII",
       [this](const SNSettings& s) { return s.isSystemServiceProtected(accented); }},
      {"arrangement", [](const SNSettings& s) { return s.isAppArrangementProtected(); }},
      {"app switcher", [](const SNSettings& s) { return s.isAppSwitcherProtected(); }},
      {"respring", [](const SNSettings& s) { return s.isRespringProtected(); }},
      {"reboot", [](const SNSettings& s) { return s.isRebootProtected(); }},
      {"photos", [](const SNSettings& s) { return s.isPhotosProtected(); }},
      {"caller ID", [](const SNSettings& s) { return s.isCallerIDProtected(); }},
      {"caller ID on the lock screen",
       [](const SNSettings& s) { return s.isCallerIDProtectedRemoveFromLockScreen(); }},
      {"caller ID unattended",
       [](const SNSettings& s) { return s.isHideCallerInfoOnAttentionAway(); }},
      {"watch", [](const SNSettings& s) { return s.isUnlockWithAppleWatch(); }},
      {"passcode only", [](const SNSettings& s) { return !s.shouldUsePasscodeOnly(); }},
  };
  for (const Question& question : questions) {
    EXPECT_TRUE(question.ask(settings())) << question.name;
    const std::size_t before = allocationsSoFar();
    question.ask(settings());
    EXPECT_EQ(allocationsSoFar() - before, 0U) << question.name;
  }
}

TEST_F(ProtectionQuestions, AllocationsAreReallyCounted) {
  device.wifi().joined = "home";
  const std::size_t before = allocationsSoFar();
  settings().isAppProtected(item);
  EXPECT_GT(allocationsSoFar() - before, 0U);
}

}  // namespace
}  // namespace sentrel
