#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "sentrel/bridge/MessageCoding.h"
#include "sentrel/controller/SentrelController.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

using namespace std::chrono_literals;

class UnlockSessions : public TwoProcesses {
 protected:
  enum class Mode { off, timed, untilLock };

  void useSessions(Mode mode, bool applyToAll = false, double minutes = 5) {
    useSettings({{"SentrelRemember", mode != Mode::off},
                 {"SentrelRememberUntilDeviceLocked", mode == Mode::untilLock},
                 {"SentrelApplyUnlockSession", applyToAll},
                 {"SentrelRememberTime", minutes}});
  }

  SentrelController& controller() { return springBoard->process().controller(); }

  void unlock(const char* key) { controller().updateLastAuthenticationTime(SessionKey(key)); }

  bool covers(const SessionItem& item) { return controller().shouldIgnoreAuthentication(item); }

  void unlockInApp(const SessionKey& key) {
    inApp([&] { SentrelController::sharedInstance().updateLastAuthenticationTime(key); });
  }

  bool coversInApp(const SessionItem& item) {
    return inApp(
        [&] { return SentrelController::sharedInstance().shouldIgnoreAuthentication(item); });
  }
};

TEST_F(UnlockSessions, TimedSessionCoversItsKeyUpToAndIncludingItsLastMoment) {
  for (const double minutes : {2.5, 0.0}) {
    useSessions(Mode::timed, /*applyToAll=*/false, minutes);
    unlock("a");
    device.time().advance(40s);
    unlock("a");
    EXPECT_TRUE(covers("a"));
    EXPECT_FALSE(covers("b"));
    device.time().advance(minutes * 60s);
    EXPECT_TRUE(covers("a"));
    device.time().advance(1ms);
    EXPECT_FALSE(covers("a"));
  }
}

TEST_F(UnlockSessions, TimedSessionForAllIsCountedFromTheLastSuccessOfAnyKey) {
  useSessions(Mode::timed, /*applyToAll=*/true, 1);
  EXPECT_FALSE(covers("a"));
  unlock("a");
  device.time().advance(40s);
  unlock("b");
  device.time().advance(60s);
  EXPECT_TRUE(covers("a"));
  EXPECT_TRUE(covers("never unlocked"));
  device.time().advance(1s);
  EXPECT_FALSE(covers("b"));
  device.time().setWallClock(device.time().now() - Seconds(24h));
  EXPECT_TRUE(covers("b")) << "a clock set back leaves it open";
}

TEST_F(UnlockSessions, UntilLockSessionIgnoresTheTimeAndEndsWithTheLock) {
  useSessions(Mode::untilLock, /*applyToAll=*/false, 1);
  unlock("a");
  device.time().advance(24h);
  EXPECT_TRUE(covers("a"));
  EXPECT_FALSE(covers("b"));
  controller().deviceScreenDimmed();
  EXPECT_TRUE(covers("a"));
  controller().deviceLocked();
  EXPECT_FALSE(covers("a"));
}

TEST_F(UnlockSessions, SessionForAllNeedsOneSuccessOfAnyKeyAndOnlyATimedOneOutlivesALock) {
  for (const Mode mode : {Mode::timed, Mode::untilLock}) {
    useSessions(mode, /*applyToAll=*/true);
    EXPECT_FALSE(covers("a"));
    unlock("a");
    EXPECT_TRUE(covers("b"));
    controller().deviceLocked();
    EXPECT_EQ(covers("a"), mode == Mode::timed);
  }
}

TEST_F(UnlockSessions, SwitchedOffRecordsAndAnswersNothing) {
  useSessions(Mode::timed);
  unlock("a");
  useSessions(Mode::off);
  unlock("b");
  EXPECT_FALSE(covers("a"));
  useSessions(Mode::timed);
  EXPECT_TRUE(covers("a"));
  EXPECT_FALSE(covers("b"));
}

TEST_F(UnlockSessions, ObjectIsCoveredByItsIdentityAlone) {
  useSessions(Mode::timed);
  const auto specifier = std::make_shared<const std::string>("a");
  const auto twin = std::make_shared<const std::string>("a");
  controller().updateLastAuthenticationTime(SessionKey::object(specifier));
  EXPECT_TRUE(covers(SessionItem::object(specifier.get())));
  EXPECT_FALSE(covers(SessionItem::object(twin.get())));
  EXPECT_FALSE(covers("a"));
}

TEST_F(UnlockSessions, RecordIsAnotherKeyEachTime) {
  useSessions(Mode::untilLock);
  const PropertyList record = PropertyList::Dictionary{{"SentrelFolderDisplayName", "Games"}};
  controller().updateLastAuthenticationTime(SessionKey::record(record));
  controller().updateLastAuthenticationTime(SessionKey::record(record));
  EXPECT_EQ(controller().rememberTillDeviceLockCache().size(), 2U);
  EXPECT_FALSE(covers(SessionItem::record(record)));
}

TEST_F(UnlockSessions, ApplicationRecordsHereAndThereAndAsksOnlyTheHomeScreen) {
  useSessions(Mode::timed);
  unlockInApp(SessionKey("a"));
  EXPECT_TRUE(covers("a"));
  EXPECT_TRUE(coversInApp("a"));
  EXPECT_TRUE(app->process().controller().lastUnlockedTime());

  unlock("only in the home screen");
  EXPECT_TRUE(coversInApp("only in the home screen"));

  springBoard->run([&] { controller().deviceLocked(); });
  useSessions(Mode::untilLock);
  EXPECT_FALSE(coversInApp("a")) << "the application's own cache must not be consulted";
}

TEST_F(UnlockSessions, ApplicationWithoutAHomeScreenHasNoSession) {
  useSessions(Mode::timed, /*applyToAll=*/true);
  unlockInApp(SessionKey("a"));
  device.messages().setResponder(std::string(messageChannelName), {}, {});
  EXPECT_FALSE(coversInApp("a"));
}

TEST_F(UnlockSessions, ApplicationAsksNothingWhileSessionsAreOffOrAboutWhatCannotTravel) {
  useSessions(Mode::off);
  unlockInApp(SessionKey("a"));
  EXPECT_FALSE(coversInApp("a"));
  useSessions(Mode::untilLock, /*applyToAll=*/true);
  unlock("a");
  const int folder = 0;
  EXPECT_FALSE(coversInApp(SessionItem::object(&folder)));
  EXPECT_TRUE(device.messages().sent().empty());
}

TEST_F(UnlockSessions, RecordFromAnApplicationIsCoveredOnlyWhenOneSuccessOpensAll) {
  const PropertyList record = PropertyList::Dictionary{{"SentrelFolderDisplayName", "Games"}};
  useSessions(Mode::timed);
  unlockInApp(SessionKey::record(record));
  EXPECT_FALSE(coversInApp(SessionItem::record(record)));
  useSessions(Mode::timed, /*applyToAll=*/true);
  EXPECT_TRUE(coversInApp(SessionItem::record(record)));
}

TEST_F(UnlockSessions, NoKeyAndMalformedMessagesOpenNothing) {
  useSessions(Mode::timed, /*applyToAll=*/true);
  const std::string unlocked(messages::Unlocked::name);
  const std::string lastUnlocked(messages::LastUnlocked::name);
  const auto send = [&](const std::string& name, const UserInfo& userInfo) {
    return device.messages().send("com.example.app", std::string(messageChannelName), name,
                                  userInfo);
  };
  controller().updateLastAuthenticationTime(std::nullopt);
  send(unlocked, std::nullopt);
  send(unlocked, PropertyList::Dictionary{{"Other", "a"}});
  EXPECT_FALSE(controller().lastUnlockedTime());
  unlock("a");
  for (const UserInfo& question : {UserInfo(), UserInfo(PropertyList::Dictionary()),
                                   UserInfo(PropertyList::Dictionary{{"Other", "a"}})}) {
    const UserInfo reply = send(lastUnlocked, question);
    EXPECT_FALSE(decodeReply<bool>(reply));
  }
  EXPECT_EQ(send("com.quorvin.sentrel.unknown", std::nullopt), std::nullopt);
}

}  // namespace
}  // namespace sentrel
