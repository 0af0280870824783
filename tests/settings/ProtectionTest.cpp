#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

constexpr const char* flipSwitchLibraries[] = {
    "/Library/MobileSubstrate/DynamicLibraries/Flipswitch.dylib",
    "/Library/MobileSubstrate/DynamicLibraries/FlipControlCenter.dylib"};

class Protection : public TwoProcesses {
 protected:
  Protection() {
    for (const char* path : flipSwitchLibraries)
      device.files().touch(path);
  }

  /// The system switched on with everything protected, network "home" trusted, sessions remembered.
  static Dictionary everything() {
    Dictionary file{{"SentrelTrustedNetworks", Array{"home"}}};
    for (const char* key :
         {"SentrelEnabled", "SentrelRemember", "SentrelRememberUntilDeviceLocked",
          "SentrelIconArrangement", "SentrelAppSwitcher", "SentrelRespring", "SentrelReboot",
          "SentrelPhotosProtected", "SentrelCallerIDOn", "SentrelCallerIDRemoveFromLockScreen",
          "SentrelCallerIDHideOnAttentionAway", "SentrelUnlockWithWatch"})
      file.emplace(key, true);
    for (const char* key : {"SentrelApplications", "SentrelNCApps", "SentrelSettingsBundles",
                            "SentrelFlipSwitches", "SentrelControlCenter"})
      file.emplace(key, Array{"item"});
    return file;
  }

  void useEverythingBut(const std::string& key, PropertyList value) {
    Dictionary file = everything();
    file.insert_or_assign(key, std::move(value));
    useSettings(std::move(file));
  }

  void unlock(std::string_view key) {
    springBoard->process().controller().updateLastAuthenticationTime(SessionKey(key));
  }
};

struct ItemQuestion {
  const char* name;
  const char* key;
  bool (*ask)(const SNSettings& settings, std::string_view item, bool ignoreAllOther);
};

template <auto Question>
bool askBy(const SNSettings& settings, std::string_view item, bool ignoreAllOther) {
  return (settings.*Question)(item, ignoreAllOther);
}

const ItemQuestion itemQuestions[] = {
    {"isAppProtected", "SentrelApplications",
     [](const SNSettings& settings, std::string_view item, bool ignoreAllOther) {
       return settings.isAppProtected(item, ignoreAllOther);
     }},
    {"isNotificationsAppProtected", "SentrelNCApps",
     askBy<&SNSettings::isNotificationsAppProtected>},
    {"isSpecifierProtected", "SentrelSettingsBundles", askBy<&SNSettings::isSpecifierProtected>},
    {"isFlipSwitchProtected", "SentrelFlipSwitches", askBy<&SNSettings::isFlipSwitchProtected>},
    {"isControlCenterItemProtected", "SentrelControlCenter",
     askBy<&SNSettings::isControlCenterItemProtected>},
    {"isSystemServiceProtected", "SentrelApplications",
     askBy<&SNSettings::isSystemServiceProtected>}};

TEST_F(Protection, EachItemQuestionConsultsItsOwnSet) {
  for (const ItemQuestion& question : itemQuestions) {
    SCOPED_TRACE(question.name);
    useSettings(everything());
    EXPECT_TRUE(question.ask(settings(), "item", /*ignoreAllOther=*/false));
    EXPECT_FALSE(question.ask(settings(), "ite", /*ignoreAllOther=*/false));
    EXPECT_FALSE(question.ask(settings(), "other", /*ignoreAllOther=*/true));
    useEverythingBut(question.key, Array());
    EXPECT_FALSE(question.ask(settings(), "item", /*ignoreAllOther=*/false));
    EXPECT_FALSE(question.ask(settings(), "item", /*ignoreAllOther=*/true));
  }
}

TEST_F(Protection, EachStepOfTheGateStopsAnItemAndIgnoringAllOtherPassesIt) {
  struct Step {
    const char* name;
    std::function<void()> take;
  };
  const Step steps[] = {{"switched off", [this] { useEverythingBut("SentrelEnabled", false); }},
                        {"on a trusted network", [this] { device.wifi().joined = "home"; }},
                        {"inside a session", [this] { unlock("item"); }}};
  for (const Step& step : steps)
    for (const ItemQuestion& question : itemQuestions) {
      SCOPED_TRACE(std::string(step.name) + ": " + question.name);
      useSettings(everything());
      step.take();
      EXPECT_FALSE(question.ask(settings(), "item", /*ignoreAllOther=*/false));
      EXPECT_TRUE(question.ask(settings(), "item", /*ignoreAllOther=*/true));
      device.wifi().joined.reset();
      springBoard->process().controller().deviceLocked();
    }
}

TEST_F(Protection, NetworksAreTrustedByTheirExactName) {
  useSettings(everything());
  for (const char* name : {"Home", "home ", "hom", ""}) {
    device.wifi().joined = name;
    EXPECT_TRUE(settings().isAppProtected("item")) << name;
  }
  device.wifi().joined = "home";
  EXPECT_TRUE(settings().isCurrentlyConnectedToTrustedNetwork());
  inApp([] {
    EXPECT_TRUE(SNSettings::sharedSettings().isCurrentlyConnectedToTrustedNetwork());
    EXPECT_FALSE(SNSettings::sharedSettings().isAppProtected("item"));
  });
}

TEST_F(Protection, ApplicationsAskAboutThemselvesWithTheHomeScreensSessions) {
  useEverythingBut("SentrelApplications", Array{std::string(appIdentifier)});
  const auto asksForItself = [this] {
    return inApp([] { return SNSettings::sharedSettings().isAppProtected(); });
  };
  EXPECT_TRUE(asksForItself());
  unlock(appIdentifier);
  EXPECT_FALSE(asksForItself());
  EXPECT_FALSE(settings().isAppProtected());
}

TEST_F(Protection, NoIdentifierHasNoProtectedNotifications) {
  useEverythingBut("SentrelNCApps", Array{""});
  EXPECT_FALSE(settings().isNotificationsAppProtected(std::nullopt));
  EXPECT_FALSE(settings().isNotificationsAppProtected(std::nullopt, /*ignoreAllOther=*/true));
  EXPECT_TRUE(settings().isNotificationsAppProtected(""));
}

TEST_F(Protection, OwnSettingsPaneSkipsTheGate) {
  springBoard->mainBundle().translate("Sentrel", "Wächter");
  useEverythingBut("SentrelEnabled", false);
  device.wifi().joined = "home";
  unlock("Wächter");
  EXPECT_TRUE(settings().isSpecifierProtected("Wächter"));
  EXPECT_TRUE(settings().isSpecifierProtected("Wächter", /*ignoreAllOther=*/true));
  EXPECT_FALSE(settings().isSpecifierProtected("Sentrel"));
  EXPECT_FALSE(settings().isSpecifierProtected("item"));
}

TEST_F(Protection, SwitchesNeedTheirExtension) {
  useSettings(everything());
  for (const char* path : flipSwitchLibraries) {
    EXPECT_TRUE(settings().isFlipSwitchProtected("item"));
    device.files().remove(path);
    EXPECT_TRUE(settings().isFlipSwitchProtected("item")) << "behind a running process";
    settings().reloadSettings();
    EXPECT_FALSE(settings().isFlipSwitchProtected("item")) << path;
    EXPECT_TRUE(settings().isFlipSwitchProtected("item", /*ignoreAllOther=*/true));
    device.files().touch(path);
    EXPECT_TRUE(settings().isFlipSwitchProtected("item")) << "found without a reload";
  }
}

TEST_F(Protection, SystemServicesBelongToTheApplicationThatTheyBeginWith) {
  struct Service {
    Array applications;
    const char* service;
    bool isProtected;
  };
  const Service services[] = {
      {{"com.example.app"}, "COM.Example.App.share", true},
      {{"com.example.app"}, "com.example.app", true},
      {{"com.example.app"}, "com.example.apple", true},
      {{"com.example.app"}, "com.example.ap", false},
      {{"com.example.app"}, "org.com.example.app", false},
      {{"com.example.app.share.extra"}, "com.example.app.share", false},
      {{"Com.Example.APP"}, "com.example.app.share", true},
      {{"com.example.app.share", "com.example", "com.example.app"}, "com.example.other", true},
      {{"a", "b.c.d", "b.c.e", "b.f"}, "b.c.e.x", true},
      {{"a", "b.c.d", "b.c.e", "b.f"}, "b.c.f", false},
      {{"a[", "a]"}, "A[b", true},
      {{"a@"}, "A`", false},
      {{"com.ÉCOLE"}, "com.école.share", true},
      {{"com.école"}, "COM.ÉCOLE", true},
      {{"com.k"}, "com.\u212A.share", true},
      {{"com.école"}, "com.ecole", false},
      {{"com.bad\xff"}, "com.bad\xff.share", true},
      {{"Com.Bad\xff"}, "COM.bad\xff.share", true},
      {{"com.example.app"}, "COM.Example.App.share\xff", true},
      {{"com.école"}, "COM.ÉCOLE.share\xff\xfe.ÉCOLE", true},
      {{"COM.\xff\xfeÉCOLE"},
       "com.\xff\xfe"
       "école",
       true},
      {{""}, "anything", true},
      {{}, "anything", false}};
  for (const Service& service : services) {
    SCOPED_TRACE(service.service);
    useEverythingBut("SentrelApplications", service.applications);
    EXPECT_EQ(settings().isSystemServiceProtected(service.service), service.isProtected);
    EXPECT_EQ(settings().isSystemServiceProtected(service.service), service.isProtected);
  }
}

TEST_F(Protection, ManyAndLongServicesAreAnsweredLikeAnyOther) {
  useEverythingBut("SentrelApplications", Array{"com.example.app"});
  for (int i = 0; i < 10'000; ++i) {
    const std::string number = std::to_string(i % 5000);
    ASSERT_TRUE(settings().isSystemServiceProtected("com.example.app." + number));
    ASSERT_FALSE(settings().isSystemServiceProtected("org.example.app." + number));
  }
  const std::string tail(10'000, 'x');
  EXPECT_TRUE(settings().isSystemServiceProtected("com.example.app" + tail));
  EXPECT_FALSE(settings().isSystemServiceProtected("com.example.ap" + tail));
}

/// A radio that leaves it to the platform's own rule whether it sees no network.
class PlainRadio final : public WiFi {
 public:
  PlainRadio(bool hasClient, bool isJoined) : hasClient_(hasClient), isJoined_(isJoined) {}

  bool hasManager() const override { return true; }
  bool hasClient() const override { return hasClient_; }
  std::optional<Array> knownNetworks() const override { return Array(); }
  std::optional<Dictionary> currentNetwork() const override {
    return isJoined_ ? std::optional(Dictionary{{"SSID", "home"}}) : std::nullopt;
  }

 private:
  bool hasClient_;
  bool isJoined_;
};

TEST_F(Protection, ARadioThatOnlyNamesItsNetworkIsTrustedAlike) {
  for (const bool hasClient : {false, true})
    for (const bool isJoined : {false, true}) {
      SCOPED_TRACE(testing::Message() << hasClient << isJoined);
      springBoard->process().platform().wifi = std::make_shared<PlainRadio>(hasClient, isJoined);
      useSettings(everything());
      EXPECT_EQ(settings().isAppProtected("item"), !(hasClient && isJoined));
    }
}

/// Short texts over few letters, so that many begin with one another.
std::string randomText(std::mt19937& random) {
  std::string text;
  for (auto left = std::uniform_int_distribution(0, 12)(random); left > 0; --left)
    text += "aAbB.z"[std::uniform_int_distribution(0, 5)(random)];
  return text;
}

bool beginsIgnoringCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() &&
         std::ranges::equal(text.substr(0, prefix.size()), prefix, {}, ::tolower, ::tolower);
}

TEST_F(Protection, LookUpsAgreeWithTryingEveryApplication) {
  std::mt19937 random(20240507);
  useEverythingBut("SentrelApplications", Array());
  std::vector<std::string> applications;
  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE(round);
    const std::string application = randomText(random) + "x";
    if (round % 3 == 2) {
      settings().removeFromProtectedApps(applications.front());
      applications.erase(applications.begin());
    } else if (std::ranges::find(applications, application) == applications.end()) {
      settings().addToProtectedApps(application);
      applications.push_back(application);
    }
    for (int i = 0; i < 50; ++i) {
      const std::string text = randomText(random) + "x" + randomText(random);
      const bool isMember = std::ranges::find(applications, text) != applications.end();
      const bool belongs = std::ranges::any_of(applications, [&text](const std::string& candidate) {
        return beginsIgnoringCase(text, candidate);
      });
      ASSERT_EQ(settings().isAppProtected(text), isMember) << text;
      ASSERT_EQ(settings().isSystemServiceProtected(text), belongs) << text;
    }
    for (const std::string& member : applications)
      ASSERT_TRUE(settings().isAppProtected(member)) << member;
  }
}

/// A question without an item: the key of its flag, its setter and the name of its session.
struct FeatureQuestion {
  const char* key;
  bool (SNSettings::*ask)() const;
  void (SNSettings::*set)(bool);
  const char* serviceName;
  bool hasNetworkStep = true;
};

const FeatureQuestion featureQuestions[] = {
    {"SentrelIconArrangement", &SNSettings::isAppArrangementProtected,
     &SNSettings::setAppArrangementProtected, "App Arrangement Protection"},
    {"SentrelAppSwitcher", &SNSettings::isAppSwitcherProtected,
     &SNSettings::setAppSwitcherProtected, "App Switcher Protection"},
    {"SentrelRespring", &SNSettings::isRespringProtected, &SNSettings::setRespringProtected,
     "Respring Protection"},
    {"SentrelReboot", &SNSettings::isRebootProtected, &SNSettings::setRebootProtected,
     "Reboot Protection"},
    {"SentrelPhotosProtected", &SNSettings::isPhotosProtected, &SNSettings::setPhotosProtected,
     "Photos Protection"},
    {"SentrelCallerIDOn", &SNSettings::isCallerIDProtected, &SNSettings::setCallerIDProtected,
     nullptr},
    {"SentrelCallerIDRemoveFromLockScreen", &SNSettings::isCallerIDProtectedRemoveFromLockScreen,
     &SNSettings::setCallerIDProtectedRemoveFromLockScreen, nullptr},
    {"SentrelCallerIDHideOnAttentionAway", &SNSettings::isHideCallerInfoOnAttentionAway,
     &SNSettings::setHideCallerInfoOnAttentionAway, nullptr},
    {"SentrelUnlockWithWatch", &SNSettings::isUnlockWithAppleWatch,
     &SNSettings::setUnlockWithAppleWatch, nullptr, /*hasNetworkStep=*/false}};

TEST_F(Protection, EachFeatureHasItsFlagBehindItsOwnGate) {
  for (const FeatureQuestion& feature : featureQuestions) {
    SCOPED_TRACE(feature.key);
    const auto isProtected = [&] { return (settings().*feature.ask)(); };
    useSettings(everything());
    EXPECT_TRUE(isProtected());
    (settings().*feature.set)(false);
    EXPECT_FALSE(isProtected());
    useEverythingBut(feature.key, false);
    EXPECT_FALSE(isProtected());
    useEverythingBut("SentrelEnabled", false);
    EXPECT_FALSE(isProtected());
    useSettings(everything());
    device.wifi().joined = "home";
    EXPECT_EQ(isProtected(), !feature.hasNetworkStep);
    device.wifi().joined.reset();
  }
}

TEST_F(Protection, SessionsCoverFeaturesUnderTheirLocalisedNames) {
  useSettings(everything());
  for (const FeatureQuestion& feature : featureQuestions) {
    if (!feature.serviceName) continue;
    SCOPED_TRACE(feature.key);
    const std::string local = std::string(feature.serviceName) + " (lokal)";
    springBoard->mainBundle().translate(feature.serviceName, local);
    unlock(feature.serviceName);
    EXPECT_TRUE((settings().*feature.ask)());
    unlock(local);
    EXPECT_FALSE((settings().*feature.ask)());
  }
}

TEST_F(Protection, ApplicationSendsOnlyWhatAStepOfTheGateNeeds) {
  const auto sent = [this] {
    std::vector<std::string> names;
    for (const simulated::SentMessage& message : device.messages().sent())
      names.push_back(message.name);
    device.messages().forgetSent();
    return names;
  };
  const auto askEverything = [this] {
    inApp([] {
      const SNSettings& own = SNSettings::sharedSettings();
      for (const ItemQuestion& question : itemQuestions)
        EXPECT_FALSE(question.ask(own, "item", /*ignoreAllOther=*/false)) << question.name;
      for (const FeatureQuestion& feature : featureQuestions)
        EXPECT_FALSE(feature.hasNetworkStep && (own.*feature.ask)()) << feature.key;
      EXPECT_FALSE(own.hasFolder(PropertyList::Dictionary()));
      EXPECT_FALSE(own.isFolderProtectedForApp("item"));
    });
  };
  device.wifi().joined = "home";
  useEverythingBut("SentrelEnabled", false);
  askEverything();
  EXPECT_THAT(sent(), testing::IsEmpty());
  useSettings(everything());
  askEverything();
  EXPECT_THAT(sent(),
              testing::AllOf(testing::Not(testing::IsEmpty()),
                             testing::Each("com.quorvin.sentrel.app.lastConnectedNetWork")));
}

TEST_F(Protection, NoSessionCoversCallerIDAndTheWatch) {
  useEverythingBut("SentrelApplyUnlockSession", true);
  unlock("anything");
  for (const FeatureQuestion& feature : featureQuestions) {
    const bool isCovered = feature.serviceName != nullptr;
    EXPECT_EQ((settings().*feature.ask)(), !isCovered) << feature.key;
  }
}

TEST_F(Protection, CompanionsOfCallerIDHoldOnlyWithIt) {
  useEverythingBut("SentrelCallerIDOn", false);
  EXPECT_FALSE(settings().isCallerIDProtectedRemoveFromLockScreen());
  EXPECT_FALSE(settings().isHideCallerInfoOnAttentionAway());
}

TEST_F(Protection, PhotosAreAlsoProtectedAsAnApplication) {
  const std::string photos = "com.apple.mobileslideshow";
  Dictionary file = everything();
  file.insert_or_assign("SentrelPhotosProtected", false);
  file.insert_or_assign("SentrelApplications", Array{photos});
  useSettings(file);
  EXPECT_TRUE(settings().isPhotosProtected());
  unlock(photos);
  EXPECT_FALSE(settings().isPhotosProtected());
  settings().setPhotosProtected(true);
  EXPECT_TRUE(settings().isPhotosProtected());
}

TEST_F(Protection, PasscodeAloneNeedsAStoredPasscode) {
  useSettings({{"SentrelUsePasscodeOnly", true}});
  EXPECT_FALSE(settings().shouldUsePasscodeOnly());
  useSettings({{"SentrelUsePasscodeOnly", true}, {"SentrelPasscode", ""}});
  EXPECT_FALSE(settings().shouldUsePasscodeOnly());
  useSettings({{"SentrelUsePasscodeOnly", true}, {"SentrelPasscode", "x"}});
  EXPECT_TRUE(settings().shouldUsePasscodeOnly());
  useSettings({{"SentrelPasscode", "x"}});
  EXPECT_FALSE(settings().shouldUsePasscodeOnly());
}

}  // namespace
}  // namespace sentrel
