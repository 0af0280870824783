#include "host/PasscodeKeeper.h"

#include <gmock/gmock.h>

#include "sentrel/passcode/SNPasscodeViewController.h"
#include "tests/support/HomeScreenTest.h"

namespace sentrel {
namespace {

using host::PasscodeKeeper;
using testing::ElementsAre;
using testing::HasSubstr;

class PasscodeKeeperTest : public HomeScreenTest {
 protected:
  PasscodeKeeperTest() {
    device.files().put(std::string(settingsFilePath), {});
    start();
  }

  /// What a process begins with; everything in memory is gone.
  void start() {
    keeper.reset();
    restart("14.0");
    keeper = std::make_shared<PasscodeKeeper>([this](const auto& text) { said.push_back(text); });
    keeper->setLockoutRule({.attempts = 3, .wait = Seconds(60)});
  }

  /// Whether the screen takes `entry` for the passcode.
  bool enter(const std::string& entry) {
    const auto screen = SNPasscodeViewController::sharedUser();
    screen->setDelegate(keeper);
    screen->_prepareForTurningOffPasscode();
    screen->_cancelAndDismissMe();
    screen->_prepareForChangingPasscode();
    const bool isRight = screen->_validatePasscode(entry);
    screen->_cancelAndDismissMe();
    return isRight;
  }

  void fail(int times) {
    for (int time = 0; time < times; ++time)
      EXPECT_FALSE(enter("000000"));
  }

  std::vector<std::string> said;
  std::shared_ptr<PasscodeKeeper> keeper;
};

TEST_F(PasscodeKeeperTest, StoresSixDigitsWhereThePromptReadsThem) {
  keeper->savePasscode("123456");
  EXPECT_TRUE(SNSettings::sharedSettings().validatePasscode("123456"));
  const std::pair<std::optional<std::string>, const char*> refused[] = {
      {std::nullopt, "no new passcode"}, {"", "no new passcode"},  {"12345", "six digits"},
      {"1234567", "six digits"},         {"12345a", "six digits"}, {"١٢٣", "six digits"}};
  for (const auto& [passcode, reason] : refused) {
    keeper->savePasscode(passcode);
    EXPECT_THAT(said.back(), HasSubstr(reason));
  }
  device.files().setWritesFail(true);
  keeper->savePasscode("654321");
  keeper->deletePasscode();
  EXPECT_THAT(said.back(), HasSubstr("not removed"));
  EXPECT_EQ(said.size(), 8U);
  EXPECT_EQ(keeper->passcode(), "123456");
  device.files().setWritesFail(false);
  keeper->deletePasscode();
  EXPECT_EQ(keeper->passcode(), std::nullopt);
}

TEST_F(PasscodeKeeperTest, ItsFlowsHaveSixBoxesAgainWhenAnotherLengthIsGone) {
  storePasscode("1234");
  const auto screen = SNPasscodeViewController::sharedUser();
  PasscodeKeeper::attach(keeper, screen);
  screen->view();
  EXPECT_EQ(screen->digitsCount(), 4);
  screen->_prepareForTurningOffPasscode();
  EXPECT_TRUE(screen->_validatePasscode("1234"));
  EXPECT_EQ(screen->digitsCount(), 6);
}

TEST_F(PasscodeKeeperTest, WhatCannotBeReadStaysAPasscodeThatNothingMatches) {
  keeper->savePasscode("123456");
  keeper->passcode();
  device.files().remove(std::string(settingsFilePath));
  SNSettings::sharedSettings().reloadSettings();
  EXPECT_FALSE(enter("123456"));
  SNSettings::sharedSettings().setPasscode("no cipher");
  EXPECT_FALSE(enter("no cipher"));
  EXPECT_EQ(utf16Length(keeper->passcode().value_or("")), 6U);
}

TEST_F(PasscodeKeeperTest, KeepsTimerAndFingerprintThroughARestart) {
  EXPECT_FALSE(keeper->allowUnlockWithTouchID() || keeper->didPasscodeTimerEnd());
  EXPECT_EQ(keeper->timerDuration() + keeper->timerStartTime(), -2);
  keeper->saveAllowUnlockWithTouchID(true);
  keeper->saveTimerDuration(60);
  EXPECT_TRUE(keeper->didPasscodeTimerEnd());  // nobody knows since when
  keeper->saveTimerStartTime();
  const double start_ = keeper->timerStartTime();
  start();
  EXPECT_TRUE(keeper->allowUnlockWithTouchID());
  EXPECT_EQ(keeper->timerStartTime(), start_);
  for (const auto& [away, ended] : {std::pair(59, false), {60, true}, {-1, true}}) {
    device.time().setWallClock(WallTime(Seconds(start_ + away)));
    EXPECT_EQ(keeper->didPasscodeTimerEnd(), ended) << away;
  }
}

// --- The lockout ---------------------------------------------------------------------------------

TEST_F(PasscodeKeeperTest, AttemptsBeyondTheLimitWaitThroughARestartAndAClockSetBack) {
  keeper->savePasscode("123456");
  fail(2);
  start();
  fail(1);
  EXPECT_EQ(keeper->lockoutRemaining(), Seconds(60));
  EXPECT_FALSE(enter("123456"));
  EXPECT_THAT(said.back(), HasSubstr("another 60 s"));
  advance(59);
  start();
  EXPECT_EQ(keeper->lockoutRemaining(), Seconds(1));
  device.time().setWallClock(device.time().now() - Seconds(3600));
  EXPECT_EQ(keeper->lockoutRemaining(), Seconds(60));
  advance(59.5);
  EXPECT_FALSE(enter("123456"));
  advance(1);
  // Each wrong one after that waits anew; the right one ends it all.
  fail(1);
  EXPECT_EQ(keeper->lockoutRemaining(), Seconds(60));
  advance(60);
  EXPECT_TRUE(enter("123456"));
  fail(2);
  EXPECT_EQ(keeper->lockoutRemaining(), Seconds(0));
}

TEST_F(PasscodeKeeperTest, AnAttemptIsWrittenBeforeItIsChecked) {
  keeper->savePasscode("123456");
  EXPECT_TRUE(keeper->passcodeWillBeChecked());  // and the phone dies
  start();
  fail(2);
  EXPECT_FALSE(keeper->passcodeWillBeChecked());
  // Opening by other means, looking, or changing the rule in between brings nothing back.
  keeper->passcodeWasEnteredSuccessfully();
  EXPECT_GT(keeper->lockoutRemaining(), Seconds(0));
  keeper->setLockoutRule({});
  EXPECT_TRUE(keeper->passcodeWillBeChecked());
}

TEST_F(PasscodeKeeperTest, AttemptsAreCountedWhereTheFileTakesNothing) {
  keeper->savePasscode("123456");
  for (const bool isUnreadable : {false, true}) {
    start();
    if (isUnreadable) device.files().touch(host::passcodeRecordPath);
    device.files().setWritesFail(!isUnreadable);
    fail(3);
    EXPECT_FALSE(enter("123456"));
    EXPECT_FALSE(device.files().readDictionary(host::passcodeRecordPath).dictionary);
  }
}

}  // namespace
}  // namespace sentrel
