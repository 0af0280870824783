#include "tests/support/PromptTest.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A request is begun on a later turn, and its prompt shown by an alert or a legacy alert.
class Prompts : public PromptTest {
 protected:
  void startOnPath(bool isLegacy) { start("14.0", /*hasFaceID=*/true, isLegacy); }

  /// What is on the screen: "glyph 0 [Cancel]", with the keyboard if it is up.
  std::string seen() {
    if (!isShowing()) return "nothing";
    std::string text =
        isInPasscodeMode() ? "passcode" : "glyph " + std::to_string(view().glyphView()->state());
    text += focusedField() ? ", keyboard [" : " [";
    for (const std::string& title : buttonTitles())
      text += (text.ends_with('[') ? "" : ", ") + title;
    return text + "]";
  }

  Lines buttonTitles() {
    Lines titles;
    if (const auto legacy = legacyAlert())
      for (int index = 0; index < legacy->numberOfButtons(); ++index)
        titles.push_back(legacy->buttonTitleAtIndex(index));
    else
      for (const auto& action : alert()->actions())
        titles.push_back(action->title());
    return titles;
  }

  void askForced(bool forceTouch) {
    controller().showAuthenticationViewController("T", "M", forceTouch, presenter(), noting());
    advance(1);
  }
};

TEST_F(Prompts, OpenOnTheGlyphUnlessThePasscodeIsForced) {
  struct Case {
    const char* version;
    bool hasFaceID;
    bool hasPasscode;
    bool passcodeOnly;
    bool forceTouch;
    const char* alert;
    const char* legacyAlert;
  };
  const char* both = "glyph 0 [Enter Passcode, Cancel]";
  const char* legacyBoth = "glyph 0 [Cancel, Enter Passcode]";
  const Case cases[] = {
      {"14.0", true, true, false, false, both, legacyBoth},
      {"12.0", true, true, false, true, both, legacyBoth},
      {"11.4", true, true, false, false, "glyph 2 [Enter Passcode, Cancel]",
       "glyph 2 [Cancel, Enter Passcode]"},
      {"11.4", false, true, false, false, both, legacyBoth},
      {"9.3", false, true, false, false, both, legacyBoth},
      {"14.0", true, false, false, false, "glyph 0 [Cancel]", "glyph 0 [Cancel]"},
      {"14.0", true, false, true, true, "glyph 0 [Cancel]", "glyph 0 [Cancel]"},
      {"14.0", true, true, true, true, both, legacyBoth},
      {"14.0", true, true, true, false, "passcode, keyboard [Cancel]",
       "passcode, keyboard [Cancel]"},
      {"11.4", false, false, true, false, "glyph 0 [Cancel]", "glyph 0 [Cancel]"},
  };
  for (const Case& c : cases)
    for (const bool isLegacy : {false, true}) {
      SCOPED_TRACE(formatText("%@ %d%d%d%d legacy %d", {c.version, c.hasFaceID, c.hasPasscode,
                                                        c.passcodeOnly, c.forceTouch, isLegacy}));
      start(c.version, c.hasFaceID, isLegacy);
      useSettings({{"SentrelUsePasscodeOnly", c.passcodeOnly}}, c.hasPasscode);
      askForced(c.forceTouch);
      EXPECT_EQ(seen(), isLegacy ? c.legacyAlert : c.alert);
      EXPECT_TRUE(sensorManager().isRunning());
    }
}

TEST_F(Prompts, AreInTheLanguageOfTheProcess) {
  for (const bool isLegacy : {false, true}) {
    startOnPath(isLegacy);
    process->mainBundle().translate("Cancel", "Abbrechen");
    process->mainBundle().translate("Sentrel", "Wache");
    prompt();
    EXPECT_NE(visibleButton("Abbrechen"), nullptr);
    EXPECT_EQ(isLegacy ? legacyAlert()->title() : alert()->title(), "Wache");
  }
}

TEST_F(Prompts, WaitForTheControlCentreAndThenAMomentForTheAlert) {
  struct Case {
    bool isFromControlCentre;
    bool isLegacy;
    double begins;
    double shows;
  };
  for (const Case& c : {Case{false, false, 0, 0.1}, Case{false, true, 0, 0},
                        Case{true, false, 0.5, 0.6}, Case{true, true, 0.5, 0.5}}) {
    SCOPED_TRACE(formatText("%d %d", {c.isFromControlCentre, c.isLegacy}));
    startOnPath(c.isLegacy);
    SNUtils::setRequestingFromCC(c.isFromControlCentre);
    ask();
    const auto hasBegun = [this] {
      return controller().completionBlock() && sensorManager().isRunning();
    };
    EXPECT_FALSE(hasBegun());
    if (c.begins > 0) advance(c.begins - 0.001);
    EXPECT_FALSE(hasBegun());
    advance(0.002);
    EXPECT_TRUE(hasBegun());
    if (c.shows > c.begins) {
      EXPECT_FALSE(isShowing());
      advance(c.shows - c.begins - 0.01);
      EXPECT_FALSE(isShowing());
      advance(0.01);
    }
    EXPECT_TRUE(isShowing());
  }
}

TEST_F(Prompts, RestAFaceSensorWhileAPasscodeIsTyped) {
  struct Case {
    bool hasFaceID;
    const char* wayBack;
  };
  for (const Case& c : {Case{true, "Use Face ID"}, Case{false, "Use Fingerprint"}})
    for (const bool isLegacy : {false, true}) {
      SCOPED_TRACE(formatText("%@ legacy %d", {c.wayBack, isLegacy}));
      start("14.0", c.hasFaceID, isLegacy);
      prompt();
      EXPECT_TRUE(tapButton("Enter Passcode"));
      EXPECT_TRUE(sensorManager().isRunning()) << "looked at on a later turn";
      advance(1);
      EXPECT_NE(focusedField(), nullptr);
      EXPECT_EQ(sensorManager().isRunning(), !c.hasFaceID);
      EXPECT_TRUE(tapButton(c.wayBack));
      advance(1);
      EXPECT_FALSE(isInPasscodeMode());
      EXPECT_TRUE(sensorManager().isRunning());
      sense(match);
      advance(1);
      EXPECT_THAT(takeHappened(), ElementsAre("ended YES YES"));
    }
}

TEST_F(Prompts, EndWithTheCancelButtonOrATypedPasscode) {
  for (const bool isLegacy : {false, true})
    for (const bool isTyped : {false, true}) {
      SCOPED_TRACE(formatText("legacy %d typed %d", {isLegacy, isTyped}));
      startOnPath(isLegacy);
      prompt();
      EXPECT_TRUE(tapButton("Enter Passcode"));
      advance(1);
      if (isTyped) {
        EXPECT_TRUE(type("111111"));
        advance(2);
        EXPECT_THAT(happened, IsEmpty());
        EXPECT_TRUE(isShowing());
        EXPECT_TRUE(type(passcode));
      } else {
        EXPECT_TRUE(tapButton("Cancel"));
      }
      advance(1);
      EXPECT_THAT(takeHappened(), ElementsAre(isTyped ? "ended YES YES" : "ended NO NO"));
      EXPECT_EQ(seen(), "nothing");
      EXPECT_EQ(controller().alertController(), nullptr);
      EXPECT_EQ(visibleButton("Cancel"), nullptr);
      EXPECT_EQ(focusedField(), nullptr);
      EXPECT_FALSE(sensorManager().isRunning());
      EXPECT_THAT(device.sensor().assertions(), IsEmpty());
      prompt("next");
      EXPECT_TRUE(seen().starts_with("glyph 0")) << "whatever mode the last one ended in";
    }
}

TEST_F(Prompts, SurviveTheirPresenterAndOneThatIsBusy) {
  window->setRootViewController(std::make_shared<UIViewController>());
  ask("let go");
  window.reset();
  advance(1);
  sense(match);
  advance(1);
  start("14.0");
  presenter()->presentViewController(std::make_shared<UIViewController>(), /*animated=*/false, {});
  prompt("busy");
  EXPECT_EQ(seen(), "nothing");
  sense(match);
  advance(1);
  EXPECT_THAT(takeHappened(), ElementsAre("busy YES YES"));
  EXPECT_FALSE(sensorManager().isRunning());
}

TEST_F(Prompts, AreDismissedOnALaterTurnAlsoWhereThereIsNone) {
  for (const bool isLegacy : {false, true})
    for (const bool isThere : {false, true}) {
      SCOPED_TRACE(formatText("legacy %d there %d", {isLegacy, isThere}));
      startOnPath(isLegacy);
      if (isThere) prompt();
      const auto note = [this] { happened.push_back("dismissed"); };
      controller().dismissAuthenticationViewController(/*animated=*/true, note);
      EXPECT_EQ(isShowing(), isThere);
      EXPECT_THAT(happened, IsEmpty());
      device.time().runDue();
      EXPECT_FALSE(isShowing());
      EXPECT_EQ(happened.empty(), isThere && !isLegacy) << "an alert takes its time";
      advance(1);
      EXPECT_THAT(takeHappened(), ElementsAre("dismissed"));
      controller().dismissAuthenticationViewController(/*animated=*/true, nullptr);
      advance(1);
    }
}

}  // namespace
}  // namespace sentrel
