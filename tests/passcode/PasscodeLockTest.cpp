// The timer, the fingerprint, and the application's coming and going.

#include <thread>

#include "tests/passcode/RecordedFlow.h"

namespace sentrel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// A sensor whose owner answers when the test says so, on a thread of the system's.
class LateFingerprint final : public LAContext, public LocalAuthentication {
 public:
  bool canEvaluateBiometricPolicy() override { return isUsable; }
  BiometryType biometryType() const override { return BiometryType::touchID; }
  void setLocalizedFallbackTitle(const std::string&) override {}
  void evaluateBiometricPolicy(const std::string& reason, Reply reply) override {
    reasons.push_back(reason);
    replies.push_back(std::move(reply));
  }

  std::shared_ptr<LAContext> makeContext() override {
    return std::shared_ptr<LAContext>(std::shared_ptr<void>(), this);
  }

  void answer(std::size_t number, bool success,
              const std::optional<PlatformError>& error = std::nullopt) {
    std::thread(replies.at(number), success, error).join();
  }

  bool isUsable = true;
  std::vector<std::string> reasons;
  std::vector<Reply> replies;
};

class PasscodeLockTest : public PasscodeFlowTest {
 protected:
  PasscodeLockTest() {
    platform().localAuthentication = fingerprint;
    delegate->stored = "1234";
    flow->setAllowUnlockWithTouchID(true);
  }

  void settle() { advance(0); }

  std::shared_ptr<LateFingerprint> fingerprint = std::make_shared<LateFingerprint>();
};

// --- The timer -----------------------------------------------------------------------------------

TEST_F(PasscodeLockTest, LeavingStartsTheTimerUnlessTheLockScreenIsUp) {
  flow->setUseFallbackPasscode(true);
  flow->_applicationWillResignActive();
  EXPECT_FALSE(flow->useFallbackPasscode());
  EXPECT_THAT(log.take(), ElementsAre("0.00 saveTimerStartTime"));
  flow->showLockscreenWithoutAnimation();
  log.take();
  flow->_applicationWillResignActive();
  EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PasscodeLockTest, ReturningLocksOnceTheTimeIsOver) {
  flow->_applicationWillEnterForeground();
  EXPECT_THAT(log.take(), IsEmpty());
  delegate->timerEnded = true;
  flow->_applicationWillEnterForeground();
  EXPECT_THAT(log.take(), Contains("0.00 cover window"));
  // A pushed settings flow gives way first.
  flow->showForChangingPasscodeInViewController(nullptr, /*asModal=*/false);
  log.take();
  flow->_applicationWillEnterForeground();
  EXPECT_THAT(log.take(), ElementsAre("0.00 pop"));
  settle();
  EXPECT_THAT(log.take(), Contains("0.00 cover window"));
  delegate->stored = "";
  flow->_applicationWillResignActive();
  flow->_applicationDidEnterBackground();
  flow->_applicationWillEnterForeground();
  EXPECT_THAT(log.take(), IsEmpty());
}

TEST_F(PasscodeLockTest, OnlyAPushedSettingsFlowStaysInSightInTheBackground) {
  const struct {
    bool isLock;
    bool isModal;
    bool isCovered;
  } cases[] = {{true, true, true}, {false, true, true}, {false, false, false}};
  for (const auto& each : cases) {
    flow->setDisplayedAsModal(each.isModal);
    each.isLock ? flow->showLockscreenWithoutAnimation() : flow->_prepareForChangingPasscode();
    flow->setUseFallbackPasscode(true);
    flow->isEditing = true;
    log.take();
    flow->_applicationDidEnterBackground();
    EXPECT_EQ(log.take(),
              each.isCovered ? std::vector<std::string>{"0.00 cover"} : std::vector<std::string>{});
    EXPECT_FALSE(flow->isEditing);
    flow->_cancelAndDismissMe();
  }
}

// --- The fingerprint -----------------------------------------------------------------------------

TEST_F(PasscodeLockTest, AMatchOpensTheLockScreen) {
  flow->showLockscreenWithoutAnimation();
  EXPECT_THAT(fingerprint->reasons, ElementsAre("Unlock Sentrel using Touch ID"));
  EXPECT_TRUE(flow->isUsingTouchID() && flow->touchIDContext());
  EXPECT_THAT(log.take(), Contains("0.00 hide fields"));
  fingerprint->answer(0, true);
  EXPECT_FALSE(flow->touchIDContext());
  EXPECT_THAT(log.take(), IsEmpty());
  settle();
  fingerprint->answer(0, true);
  advance(1);
  EXPECT_THAT(log.take(),
              ElementsAre("0.00 slide away 0.25", "0.00 passcodeWasEnteredSuccessfully",
                          "0.25 passcodeViewControllerWillClose", "0.25 remove from window"));
  // What comes next has its fields.
  flow->_prepareForEnablingPasscode();
  EXPECT_THAT(log.take(), Contains("0.00 show fields"));
  EXPECT_FALSE(flow->isUsingTouchID());
}

TEST_F(PasscodeLockTest, WhatIsNoMatchFallsBackAndTheNextLockScreenAsksAgain) {
  for (const bool success : {false, true}) {
    flow->showLockScreenWithAnimation(/*animated=*/false, /*withLogout=*/true, "Log out");
    log.take();
    fingerprint->answer(fingerprint->replies.size() - 1, success, PlatformError{"", -2, ""});
    advance(0.2);
    EXPECT_THAT(log.take(), ElementsAre("0.00 show fields", "0.00 no bar", "0.00 bar Log out"));
    EXPECT_TRUE(flow->isEditing && flow->useFallbackPasscode() && flow->allowUnlockWithTouchID());
    flow->_validatePasscode("1234");
    advance(1);
  }
  EXPECT_EQ(fingerprint->replies.size(), 2U);
}

/// How an offer ends for good: a second one meanwhile, no usable sensor, a passcode already in use.
TEST_F(PasscodeLockTest, WhatCannotBeOfferedIsNotOfferedAgain) {
  const std::function<void()> causes[] = {[&] { flow->_setupFingerPrint(); },
                                          [&] { fingerprint->isUsable = false; },
                                          [&] { flow->setUseFallbackPasscode(true); }};
  for (const auto& cause : causes) {
    fingerprint->isUsable = true;
    flow->setUseFallbackPasscode(false);
    flow->setAllowUnlockWithTouchID(true);
    cause();
    flow->showLockscreenWithoutAnimation();
    EXPECT_FALSE(flow->touchIDContext());
    settle();
    EXPECT_FALSE(flow->isUsingTouchID() || flow->allowUnlockWithTouchID());
    EXPECT_TRUE(flow->useFallbackPasscode());
    EXPECT_TRUE(delegate->allowsTouchID);
    // On the lock screen the keyboard stays.
    flow->isEditing = true;
    flow->hideKeyboard();
    EXPECT_TRUE(flow->isEditing);
    log.take();
    // Nobody waits for it any more.
    if (!fingerprint->replies.empty()) fingerprint->answer(0, true);
    settle();
    EXPECT_THAT(log.take(), IsEmpty());
  }
}

TEST_F(PasscodeLockTest, AMatchAnswersNothingButTheLockScreenItWasAskedFor) {
  const std::function<void()> others[] = {[&] { flow->_prepareForTurningOffPasscode(); },
                                          [&] { flow->_prepareForChangingPasscode(); },
                                          [&] { flow->_close(); }, [&] { flow.reset(); }};
  for (const auto& goOn : others) {
    flow->setUseFallbackPasscode(false);
    flow->showLockscreenWithoutAnimation();
    goOn();
    advance(1);
    log.take();
    fingerprint->answer(fingerprint->replies.size() - 1, true);
    advance(1);
    EXPECT_THAT(log.take(), IsEmpty());
  }
  EXPECT_EQ(fingerprint->replies.size(), std::size(others));
  EXPECT_EQ(delegate->stored, "1234");
}

}  // namespace
}  // namespace sentrel
