#include "sentrel/bridge/SNUtils.h"
#include "tests/support/BridgeTest.h"
#include "tests/support/PromptTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* succeeded = "com.quorvin.sentrelAuthenticationSuccess";
constexpr const char* cancelled = "com.quorvin.sentrelAuthenticationCancelled";

/// The opening of an application, noted.
class Opening final : public Invocation {
 public:
  Opening(std::vector<std::string>& notes, std::optional<std::string> application)
      : notes_(notes), application_(std::move(application)) {}

  std::optional<std::string> argumentBundleIdentifier() const override { return application_; }
  void invoke() override {
    notes_.push_back("opened " + SNUtils::__currentAuthenticatedAppBundleId().value_or("nothing"));
  }

 private:
  std::vector<std::string>& notes_;
  std::optional<std::string> application_;
};

class Outcomes : public PromptTest {
 protected:
  void startPrompt(bool isLegacy = false, PropertyList::Dictionary settings = {}) {
    start("14.0", /*hasFaceID=*/true, isLegacy);
    useSettings(std::move(settings));
    prompt();
  }

  void deferOpening(std::optional<std::string> application = "com.a") {
    controller().setInvocation(std::make_shared<Opening>(happened, std::move(application)));
  }

  void typePasscode() {
    EXPECT_TRUE(tapButton("Enter Passcode"));
    advance(1);
    EXPECT_TRUE(type(passcode));
  }

  Lines posted() {
    Lines names;
    for (const Notification& notification : device.darwin().posted())
      names.push_back(notification.name);
    return names;
  }
};

TEST_F(Outcomes, RunTheDeferredActionAfterSuccessAlone) {
  struct Way {
    const char* name;
    std::function<void()> end;
    bool isSuccess;
  };
  const Way ways[] = {
      {"match", [this] { sense(match); }, true},
      {"passcode", [this] { typePasscode(); }, true},
      {"cancel", [] { tapButton("Cancel"); }, false},
      {"exhausted", [this] { sense(6); }, false},
      {"locked", [this] { controller().deviceLocked(); }, false},
      {"dimmed", [this] { controller().deviceScreenDimmed(); }, false},
  };
  for (const Way& way : ways)
    for (const bool isLegacy : {false, true}) {
      SCOPED_TRACE(formatText("%@ legacy %d", {way.name, isLegacy}));
      startPrompt(isLegacy);
      deferOpening();
      const auto before = posted().size();
      way.end();
      advance(2);
      EXPECT_EQ(takeHappened(),
                way.isSuccess ? (Lines{"opened com.a", "ended YES YES"}) : Lines{"ended NO NO"});
      EXPECT_EQ(controller().invocation(), nullptr);
      EXPECT_EQ(controller().alertController(), nullptr);
      EXPECT_FALSE(sensorManager().isRunning());
      EXPECT_THAT(device.sensor().assertions(), IsEmpty());
      ASSERT_GT(posted().size(), before);
      EXPECT_EQ(posted()[before], way.isSuccess ? succeeded : cancelled);
      EXPECT_EQ(controller().isJustAuthenticated(), way.isSuccess);
    }
}

TEST_F(Outcomes, TellTheActionsApplicationOrThatThereIsNone) {
  startPrompt();
  deferOpening("com.b");
  controller().invokeCustomInvocation();
  EXPECT_EQ(SNUtils::__currentAuthenticatedAppBundleId(), "com.b");
  deferOpening(std::nullopt);
  controller().invokeCustomInvocation();
  controller().invokeCustomInvocation();
  EXPECT_EQ(SNUtils::__currentAuthenticatedAppBundleId(), std::nullopt);
  EXPECT_THAT(takeHappened(), ElementsAre("opened com.b", "opened nothing"));
}

TEST_F(Outcomes, AreTheCallersThenTheSessionsThenThePostedOnes) {
  start("14.0");
  useSettings({{"SentrelRemember", true}});
  const auto state = [this] {
    return formatText("session %d, posted %d",
                      {controller().unlockSessionCache().size(), posted().size()});
  };
  const auto before = posted().size();
  controller().requiresAuthentication("T", "M", presenter(), [&](bool, bool) {
    happened.push_back(state());
    EXPECT_FALSE(controller().completionBlock()) << "taken out before it is called";
    controller().executeCompletionBlock(/*allowed=*/true, match);
  });
  advance(1);
  sense(match);
  advance(1);
  EXPECT_THAT(happened, ElementsAre(formatText("session 0, posted %d", {before})));
  EXPECT_EQ(controller().unlockSessionCache().size(), 1u);
}

TEST_F(Outcomes, FollowTheEventAndNotTheFlag) {
  struct Case {
    bool allowed;
    BiometricEvent event;
    const char* outcome;
    const char* posted;
  };
  for (const Case& c :
       {Case{true, 3, "ended YES YES", succeeded}, Case{false, 3, "ended YES NO", succeeded},
        Case{true, 0, "ended NO YES", cancelled}, Case{false, 6, "ended NO NO", cancelled}}) {
    startPrompt();
    controller().executeCompletionBlock(c.allowed, c.event);
    EXPECT_THAT(takeHappened(), ElementsAre(c.outcome));
    EXPECT_EQ(posted().back(), c.posted);
    EXPECT_EQ(controller().isJustAuthenticated(), c.event == match);
    controller().executeCompletionBlock(c.allowed, c.event);
    EXPECT_THAT(happened, IsEmpty()) << "a second time only the others are told";
  }
}

TEST_F(Outcomes, OfAPasscodeCountOnlyWhileAPromptShows) {
  start("14.0");
  deferOpening();
  const auto before = posted().size();
  controller().passcodeMatched(/*matched=*/true, /*animated=*/false);
  controller().passcodeMatched(/*matched=*/false, /*animated=*/false);
  controller().deviceScreenDimmed();
  EXPECT_NE(controller().invocation(), nullptr);
  EXPECT_EQ(posted().size(), before);
  useSettings({{"SentrelUsePasscodeOnly", true}});
  prompt();
  EXPECT_TRUE(type("48"));
  controller().deviceScreenDimmed();
  EXPECT_THAT(takeHappened(), ElementsAre("ended NO NO"));
  prompt();
  EXPECT_TRUE(type(passcode)) << "nothing is left of what was typed";
  advance(1);
  EXPECT_THAT(takeHappened(), ElementsAre("ended YES YES")) << "the action went with the first";
}

// --- Failure feedback ----------------------------------------------------------------------------

TEST_F(Outcomes, OfAFailureShakeThePromptAndVibrateWithTheSetting) {
  for (const bool isLegacy : {false, true})
    for (const bool vibrates : {false, true}) {
      SCOPED_TRACE(formatText("legacy %d vibrates %d", {isLegacy, vibrates}));
      start("14.0", /*hasFaceID=*/true, isLegacy);
      useSettings({{"SentrelVibrateOnError", vibrates}});
      const auto& played = device.audioServices().played();
      const auto before = played.size();
      controller().handleAuthenticationFailed(/*isFinal=*/false);
      EXPECT_EQ(played.size(), before) << "there is no prompt";
      prompt();
      UIView& shaken = isLegacy ? static_cast<UIView&>(*legacyAlert()) : *alert()->view();
      controller().handleAuthenticationFailed(/*isFinal=*/false);
      EXPECT_EQ(shaken.transform(), CGAffineTransform());
      const auto shake = shaken.layer().animationForKey("transform");
      ASSERT_TRUE(shake);
      EXPECT_THAT(shake->values,
                  ElementsAre(CAAnimation::Value(CGAffineTransform::makeTranslation(30, 0)),
                              CAAnimation::Value(CGAffineTransform())));
      EXPECT_EQ(shake->duration, Seconds(0.4));
      EXPECT_EQ(shake->timing, (CATiming{CATiming::Curve::spring, 0.2, 1}));
      ASSERT_EQ(played.size(), before + (vibrates ? 1 : 0));
      if (!vibrates) continue;
      EXPECT_EQ(played.back().sound, 4095u);
      EXPECT_EQ(played.back().pattern,
                (PropertyList::Dictionary{{"VibePattern", PropertyList::Array{true, 300}},
                                          {"Intensity", 1.0}}));
    }
}

}  // namespace
}  // namespace sentrel
