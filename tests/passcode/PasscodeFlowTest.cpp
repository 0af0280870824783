#include "sentrel/passcode/PasscodeFlow.h"

#include "tests/passcode/RecordedFlow.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Flow = PasscodeFlow;

/// A flow from its beginning to where its last entry has led.
struct Conversation {
  const char* name;
  std::optional<std::string> stored;
  void (Flow::*mode)();
  /// Typed one second apart.
  std::vector<std::string> entries;
  /// From the first entry on, the clock starting again with each.
  std::vector<std::string> lines;

  friend void PrintTo(const Conversation& told, std::ostream* out) { *out << told.name; }
};

const std::string slide = "swipe 0.15 ease";
const std::string shaken = "0.30 shake 0.6 linear";

const Conversation conversations[] = {
    {"Unlock",
     "1234",
     &Flow::_prepareAsLockScreen,
     {"1234"},
     {"0.15 slide away 0.25", "0.15 passcodeWasEnteredSuccessfully",
      "0.40 passcodeViewControllerWillClose", "0.40 remove from window"}},
    {"UnlockAfterFailures",
     "1234",
     &Flow::_prepareAsLockScreen,
     {"1111", "2222", "1234"},
     {shaken, "0.30 [1 Passcode Failed Attempt     ]", shaken,
      "0.30 maxNumberOfFailedAttemptsReached", "0.30 [2 Passcode Failed Attempts     ]",
      "0.15 no failure", "0.15 slide away 0.25", "0.15 passcodeWasEnteredSuccessfully",
      "0.40 passcodeViewControllerWillClose", "0.40 remove from window"}},
    {"Enable",
     std::nullopt,
     &Flow::_prepareForEnablingPasscode,
     {"1234", "1234"},
     {"0.30 " + slide, "0.40 Re-enter your Sentrel passcode", "0.15 savePasscode 1234",
      "0.40 passcodeViewControllerWillClose", "0.40 dismiss"}},
    {"EnableOtherwiseConfirmed",
     std::nullopt,
     &Flow::_prepareForEnablingPasscode,
     {"1234", "4321", "5555"},
     {"0.30 " + slide, "0.40 Re-enter your Sentrel passcode", "0.30 " + slide,
      "0.40 Enter your Sentrel passcode", "0.40 [Passcodes did not match. Try again.]",
      "0.30 no failure", "0.30 " + slide, "0.40 Re-enter your Sentrel passcode"}},
    {"EnableWhileStored",
     "1234",
     &Flow::_prepareForEnablingPasscode,
     {"1234"},
     {"0.15 savePasscode none", "0.15 passcodeWasEnteredSuccessfully",
      "0.40 passcodeViewControllerWillClose", "0.40 dismiss"}},
    {"Change",
     "1234",
     &Flow::_prepareForChangingPasscode,
     {"9999", "1234", "5678", "5678"},
     {shaken, "0.30 [1 Passcode Failed Attempt     ]", "0.30 no failure", "0.30 " + slide,
      "0.40 Enter your new Sentrel passcode", "0.30 " + slide,
      "0.40 Re-enter your new Sentrel passcode", "0.15 savePasscode 5678",
      "0.40 passcodeViewControllerWillClose", "0.40 dismiss"}},
    {"ChangeToTheSame",
     "1234",
     &Flow::_prepareForChangingPasscode,
     {"1234", "1234", "1234"},
     {"0.30 " + slide, "0.40 Enter your new Sentrel passcode", "0.30 " + slide,
      "0.40 Re-enter your new Sentrel passcode", "0.30 " + slide,
      "0.40 Enter your new Sentrel passcode", "0.40 [Cannot reuse the same passcode]"}},
    {"TurnOff",
     "1234",
     &Flow::_prepareForTurningOffPasscode,
     {"4321", "1234"},
     {shaken, "0.30 [1 Passcode Failed Attempt     ]", "0.15 no failure", "0.15 deletePasscode",
      "0.15 passcodeWasEnteredSuccessfully", "0.40 passcodeViewControllerWillClose",
      "0.40 dismiss"}},
};

class PasscodeConversations : public PasscodeFlowTest,
                              public testing::WithParamInterface<Conversation> {};

TEST_P(PasscodeConversations, GoAsStated) {
  delegate->stored = GetParam().stored;
  flow->setMaxNumberOfAllowedFailedAttempts(2);
  ((*flow).*GetParam().mode)();
  advance(1);
  log.take();
  std::vector<std::string> lines;
  for (const std::string& entry : GetParam().entries) {
    ASSERT_TRUE(flow->type(entry));
    advance(1);
    std::ranges::copy(log.take(), std::back_inserter(lines));
  }
  EXPECT_THAT(lines, ElementsAreArray(GetParam().lines));
}

INSTANTIATE_TEST_SUITE_P(Flows, PasscodeConversations, testing::ValuesIn(conversations),
                         [](const auto& conversation) { return conversation.param.name; });

TEST_F(PasscodeFlowTest, ShowOperationsPresentWithATitleAndTellOfTheFirstPasscode) {
  process->mainBundle().translate("Enable Sentrel Passcode", "Code aktivieren");
  flow->setDisplayAdditionalInfoDuringSettingPasscode(true);
  flow->showForEnablingPasscodeInViewController(nullptr, /*asModal=*/false);
  EXPECT_THAT(log.take(), ElementsAre("0.00 Enter your Sentrel passcode", "0.00 Passcode info",
                                      "0.00 present", "0.00 title Code aktivieren"));
  flow->type("1234"), advance(1);
  flow->type("1234"), advance(0.2);
  EXPECT_THAT(log.take(),
              testing::IsSupersetOf({"1.15 passcodeWasEnabled", "1.15 savePasscode 1234"}));
  EXPECT_FALSE(flow->tempPasscode());
  advance(1);
  EXPECT_THAT(log.take(), ElementsAre("0.20 passcodeViewControllerWillClose", "0.20 pop"));
  flow->showForChangingPasscodeInViewController(nullptr, /*asModal=*/true);
  flow->showForDisablingPasscodeInViewController(nullptr, /*asModal=*/true);
  EXPECT_THAT(log.take(), testing::IsSupersetOf({"0.00 title Change Sentrel Passcode",
                                                 "0.00 title Turn Off Sentrel Passcode"}));
}

// --- Typing --------------------------------------------------------------------------------------

TEST_F(PasscodeFlowTest, EachEditMasksABoxForEachUnitAndIsRefusedBeyondTheLast) {
  const struct {
    std::string text;
    NSRange range;
    std::string replacement;
    bool isAccepted;
    std::size_t masked;
    bool validates;
  } cases[] = {{"", {0, 0}, "1", true, 1, false},
               {"123", {3, 0}, "4", true, 4, true},
               {"1234", {4, 0}, "5", false, 4, false},
               {"1234", {3, 1}, "", true, 3, false},
               {"12", {0, 2}, "\n", false, 0, false},
               {"", {0, 0}, "9876", true, 4, true},
               {"", {0, 0}, "98765", false, 4, false},
               {"12", {7, 9}, "3", true, 3, false},
               {"\xF0\x9F\x98\x80", {2, 0}, "\xF0\x9F\x98\x80", true, 4, true}};
  for (const auto& each : cases) {
    flow->_prepareForEnablingPasscode();
    EXPECT_EQ(flow->edit(each.text, each.range, each.replacement), each.isAccepted);
    EXPECT_EQ(flow->display().maskedBoxes, each.masked) << each.replacement;
    advance(0.2);
    EXPECT_EQ(flow->tempPasscode().has_value(), each.validates) << each.replacement;
  }
}

TEST_F(PasscodeFlowTest, FreeTextIsTakenByTheOKButtonAlone) {
  flow->setIsSimple(false, nullptr, /*asModal=*/true);
  flow->_prepareForEnablingPasscode();
  log.take();
  EXPECT_TRUE(flow->type("a longer text"));
  EXPECT_FALSE(flow->type("\n"));
  EXPECT_TRUE(flow->replace({0, 13}, ""));
  EXPECT_TRUE(flow->type("x"));
  advance(1);
  EXPECT_THAT(log.take(), ElementsAre("0.00 OK", "0.00 no OK", "0.00 OK"));
  EXPECT_TRUE(flow->_validatePasscode(flow->field));
  EXPECT_EQ(flow->tempPasscode(), "x");
}

// --- Form ----------------------------------------------------------------------------------------

TEST_F(PasscodeFlowTest, ASwitchAsksForTheNewPasscodeInTheOtherForm) {
  delegate->stored = "1234";
  flow->setIsSimple(false, nullptr, /*asModal=*/true);
  EXPECT_TRUE(flow->isUserChangingPasscode() && flow->isUserSwitchingBetweenPasscodeModes());
  EXPECT_TRUE(flow->isSimple());
  flow->type("1234"), advance(1);
  EXPECT_FALSE(flow->isSimple());
  for (int entry = 0; entry < 2; ++entry)
    flow->_validatePasscode("a word"), advance(1);
  EXPECT_EQ(delegate->stored, "a word");
  EXPECT_FALSE(flow->isSimple());
  EXPECT_FALSE(flow->isUserSwitchingBetweenPasscodeModes());
  // From here on any look for a passcode makes it digits again, as many as the text is long.
  flow->_prepareAsLockScreen();
  flow->type("half a w");
  EXPECT_TRUE(flow->_doesPasscodeExist());
  EXPECT_TRUE(flow->isSimple());
  EXPECT_EQ(flow->digitsCount(), 6);
  EXPECT_EQ(flow->field, "");
}

TEST_F(PasscodeFlowTest, TheNumberOfDigitsIsTheHostsUntilAPasscodeIsStored) {
  for (const auto& [wanted, taken] : {std::pair(2, 4), {12, 10}, {7, 7}}) {
    flow->setDigitsCount(wanted);
    EXPECT_EQ(flow->digitsCount(), taken);
  }
  delegate->stored = "123";
  flow->setDigitsCount(5);
  EXPECT_EQ(flow->digitsCount(), 7);
  log.take();
  flow->_prepareAsLockScreen();
  EXPECT_EQ(log.take().at(0), "0.00 boxes 3");
}

// --- Ends ----------------------------------------------------------------------------------------

TEST_F(PasscodeFlowTest, CancelForgetsWhatWasTypedAndWhatWasQueued) {
  flow->setDisplayedAsModal(false);
  flow->_prepareForEnablingPasscode();
  flow->type("1234"), advance(1);
  flow->type("1234");
  log.take();
  flow->_cancelAndDismissMe();
  flow->_prepareForEnablingPasscode();
  advance(1);
  EXPECT_THAT(log.take(), ElementsAre("0.00 Enter your Sentrel passcode",
                                      "0.00 passcodeViewControllerWillClose", "0.00 pop animated"));
  EXPECT_FALSE(flow->tempPasscode() || flow->isUserConfirmingPasscode());
  EXPECT_EQ(delegate->stored, std::nullopt);
}

TEST_F(PasscodeFlowTest, AScreenThatComesBackWhileItLeavesStays) {
  delegate->stored = "1234";
  flow->showLockscreenWithoutAnimation();
  advance(1);
  flow->type("1234"), advance(0.2);
  log.take();
  flow->showLockScreenWithAnimation(/*animated=*/true, /*withLogout=*/true, "Log out");
  advance(1);
  EXPECT_THAT(log.take(), ElementsAre("0.00 remove from window", "0.00 slide in",
                                      "0.00 bar Log out", "0.00 no bar", "0.00 bar Log out",
                                      "0.20 passcodeViewControllerWillClose"));
  EXPECT_TRUE(flow->isCurrentlyOnScreen());
  flow->_logoutWasPressed();
  EXPECT_THAT(log.take(), ElementsAre("0.00 logoutButtonWasPressed"));
}

/// A settings flow that another one finds half done: what was asked for is told by its prompt.
TEST_F(PasscodeFlowTest, ALockScreenEndsASettingsFlow) {
  delegate->stored = "1234";
  flow->_prepareForChangingPasscode();
  flow->type("1234"), advance(1);
  flow->type("5678"), advance(1);
  log.take();
  flow->showLockscreenWithoutAnimation();
  EXPECT_THAT(log.take(), ElementsAre("0.00 Enter your Sentrel passcode",
                                      "0.00 passcodeViewControllerWillClose", "0.00 dismiss",
                                      "0.00 cover window"));
  EXPECT_FALSE(flow->tempPasscode() || flow->isUserChangingPasscode());
}

TEST_F(PasscodeFlowTest, WithoutADelegateEveryEntryIsANewPasscodeThatNobodyStores) {
  flow->_prepareAsLockScreen();
  delegate.reset();
  flow->type("1234"), advance(1);
  EXPECT_TRUE(flow->isUserConfirmingPasscode());
  flow->type("9999"), advance(1);
  EXPECT_FALSE(flow->isUserConfirmingPasscode());
  flow->_prepareForTurningOffPasscode();
  EXPECT_FALSE(flow->_validatePasscode(""));
  flow.reset();
  advance(1);
}

}  // namespace
}  // namespace sentrel
