#include <gmock/gmock.h>

#include "sentrel/authui/SNAlertController.h"
#include "sentrel/authui/SNAlertView.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/uikit/Dump.h"
#include "tests/support/BridgeTest.h"
#include "tests/support/HomeScreenTest.h"
#include "tests/support/PromptDriver.h"

namespace sentrel {
namespace {

using testing::ElementsAre;

// --- The overlay window ------------------------------------------------------------------------

class SNWindowTest : public HomeScreenTest {};

TEST_F(SNWindowTest, IsClearAtAlertLevelAndVisibleFromTheStart) {
  const auto window = SNWindow::sharedInstance();
  EXPECT_EQ(SNWindow::sharedInstance(), window);
  EXPECT_EQ(dump(*window),
            "SNWindow (0 0 375 667) level=2000 background=\"clearColor\"\n"
            "  UIView (0 0 375 667) autoresizing=18\n");
  EXPECT_FALSE(window->isForceVisible());
  EXPECT_NE(window->rootViewController(), nullptr);
}

TEST_F(SNWindowTest, ClosesUnlessItIsForcedToStay) {
  const auto window = SNWindow::sharedInstance();
  window->setForceVisible(true);
  window->closeWindow();
  EXPECT_FALSE(window->isHidden());
  window->closeWindowForcibly();
  EXPECT_TRUE(window->isHidden());
  EXPECT_FALSE(window->isForceVisible());
}

TEST_F(SNWindowTest, ShowsItselfWithEveryPresentation) {
  const auto window = SNWindow::sharedInstance();
  window->closeWindow();
  const auto shown = std::make_shared<UIViewController>();
  bool completed = false;
  window->presentViewController(shown, /*animated=*/true, [&completed] { completed = true; });
  EXPECT_FALSE(window->isHidden());
  EXPECT_EQ(window->rootViewController()->presentedViewController(), shown);
  device.time().runUntilIdle();
  EXPECT_TRUE(completed);
}

TEST_F(SNWindowTest, WithoutARootControllerOnlyShowsItself) {
  const auto window = SNWindow::sharedInstance();
  window->closeWindow();
  window->setRootViewController(nullptr);
  window->presentViewController(std::make_shared<UIViewController>(), /*animated=*/true, {});
  EXPECT_FALSE(window->isHidden());
}

TEST_F(SNWindowTest, StartsAnewAtASecondInitialize) {
  const auto window = SNWindow::sharedInstance();
  const auto root = window->rootViewController();
  const std::string atFirst = dump(*window);
  window->setForceVisible(true);
  window->setWindowLevel(7);
  window->setHidden(true);
  window->setAlpha(0.5);
  window->setBackgroundColor(std::nullopt);
  window->initialize();
  EXPECT_EQ(dump(*window), atFirst);
  EXPECT_FALSE(window->isForceVisible());
  EXPECT_NE(window->rootViewController(), root);
}

// --- The alert controller ----------------------------------------------------------------------

std::shared_ptr<SNAlertController> newAlert() {
  return SNAlertController::alertControllerWithTitle("Sentrel", std::nullopt,
                                                     UIAlertControllerStyle::alert);
}

class SNAlertControllerTest : public HomeScreenTest {
 protected:
  using Style = UIAlertActionStyle;

  std::shared_ptr<UIAlertAction> add(const std::string& title, Style style = Style::standard,
                                     bool hasHandler = true) {
    UIAlertAction::Handler handler;
    if (hasHandler)
      handler = [this](const std::shared_ptr<UIAlertAction>& tapped) {
        ran.push_back(tapped->title());
      };
    auto action = UIAlertAction::actionWithTitle(title, style, handler);
    alert->addAction(action);
    return action;
  }

  void present() {
    SNWindow::sharedInstance()->presentViewController(alert, true, {});
    device.time().runUntilIdle();
  }

  void restartWith(const std::string& version, bool hasFaceID) {
    alert.reset();
    restart(version, hasFaceID);
    alert = newAlert();
  }

  std::vector<std::string> ran;
  std::shared_ptr<SNAlertController> alert = newAlert();
};

TEST_F(SNAlertControllerTest, SwitchButtonAlternatesAndTheAlertStays) {
  for (const bool hasFaceID : {true, false}) {
    const std::string biometric = hasFaceID ? "Use Face ID" : "Use Fingerprint";
    restartWith("14.0", hasFaceID);
    ran.clear();
    add("Enter Passcode");
    present();
    EXPECT_TRUE(tapButton("Enter Passcode"));
    EXPECT_EQ(visibleButton(biometric), nullptr) << "shows at the reload on a later turn";
    device.time().runDue();
    EXPECT_TRUE(tapButton(biometric));
    device.time().runDue();
    EXPECT_NE(visibleButton("Enter Passcode"), nullptr);
    EXPECT_THAT(ran, ElementsAre("Enter Passcode", biometric));
    EXPECT_TRUE(alert->isAlertPresented());
    EXPECT_FALSE(SNWindow::sharedInstance()->isHidden());
  }
}

TEST_F(SNAlertControllerTest, RuleDecidesByGenerationStyleAndTitle) {
  const struct {
    const char* version;
    bool check;
    const char* title;
    Style style;
    bool goesOn;
    const char* titleAfter;
  } cases[] = {
      {"14.0", true, "Enter Passcode", Style::standard, true, "Enter Passcode"},
      {"9.0", true, "Enter Passcode", Style::standard, true, "Enter Passcode"},
      {"8.4", true, "Enter Passcode", Style::standard, false, "Use Fingerprint"},
      {"14.0", false, "Enter Passcode", Style::standard, false, "Use Face ID"},
      {"14.0", false, "Use Face ID", Style::standard, false, "Enter Passcode"},
      {"14.0", false, "Enter Passcode", Style::cancel, true, "Enter Passcode"},
      {"14.0", false, "Enter Passcode", Style::destructive, true, "Enter Passcode"},
      {"14.0", false, "Use Fingerprint", Style::standard, true, "Use Fingerprint"},
      {"14.0", false, "enter passcode", Style::standard, true, "enter passcode"},
      {"14.0", false, "", Style::standard, true, ""},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(std::string(each.version) + " " + each.title);
    restartWith(each.version, true);
    const auto action = add(each.title, each.style);
    ran.clear();
    EXPECT_EQ(alert->handleDismissAnimated(true, action, each.check), each.goesOn);
    EXPECT_EQ(action->title(), each.titleAfter);
    EXPECT_EQ(ran.size(), each.goesOn ? 0U : 1U);
  }
  EXPECT_TRUE(alert->handleDismissAnimated(true, nullptr, false));
}

TEST_F(SNAlertControllerTest, SwitchButtonWithoutAHandlerKeepsItsTitleAndTheAlert) {
  const auto action = add("Enter Passcode", Style::standard, /*hasHandler=*/false);
  present();
  EXPECT_TRUE(tapButton("Enter Passcode"));
  device.time().runUntilIdle();
  EXPECT_EQ(action->title(), "Enter Passcode");
  EXPECT_TRUE(alert->isAlertPresented());
  EXPECT_EQ(alert->_actionCollectionView()->reloadCount(), 1) << "that of the presentation";
}

TEST_F(SNAlertControllerTest, TitlesAreTheHostsOwn) {
  process->mainBundle().translate("Enter Passcode", "Code eingeben");
  process->mainBundle().translate("Use Face ID", "Face ID");
  const auto own = add("Code eingeben");
  const auto english = add("Enter Passcode");
  EXPECT_FALSE(alert->handleDismissAnimated(true, own, false));
  EXPECT_EQ(own->title(), "Face ID");
  EXPECT_TRUE(alert->handleDismissAnimated(true, english, false));
}

TEST_F(SNAlertControllerTest, EveryEntryPointOfTheSystemObeysTheRule) {
  const struct {
    UIAlertDismissal entry;
    bool stays;
    int reloads;
  } cases[] = {{UIAlertDismissal::animatedWithCompletion, true, 2},
               {UIAlertDismissal::withAction, true, 1},
               {UIAlertDismissal::animated, false, 1}};
  for (const auto& each : cases) {
    alert = newAlert();
    ran.clear();
    UIApplication::sharedApplication().setAlertDismissal(each.entry);
    add("Enter Passcode");
    add("Cancel", Style::cancel);
    present();
    EXPECT_TRUE(tapButton("Enter Passcode"));
    device.time().runUntilIdle();
    EXPECT_EQ(alert->isAlertPresented(), each.stays);
    EXPECT_EQ(alert->_actionCollectionView()->reloadCount(), each.reloads);
    EXPECT_EQ(ran.size(), 1U);
    if (!each.stays) continue;
    EXPECT_TRUE(tapButton("Cancel"));
    device.time().runUntilIdle();
    EXPECT_FALSE(alert->isAlertPresented());
    EXPECT_THAT(ran, ElementsAre("Enter Passcode", "Cancel"));
  }
}

TEST_F(SNAlertControllerTest, DismissalClosesTheOverlayWindowUnlessItIsForced) {
  for (const bool isForced : {false, true}) {
    alert = newAlert();
    present();
    EXPECT_TRUE(alert->isAlertPresented());
    SNWindow::sharedInstance()->setForceVisible(isForced);
    alert->dismissViewControllerAnimated(false, {});
    EXPECT_EQ(SNWindow::sharedInstance()->isHidden(), !isForced);
    EXPECT_FALSE(alert->isAlertPresented());
  }
}

TEST_F(SNAlertControllerTest, AnimationAndCompletionAreHandedOn) {
  bool isOver = false;
  const auto done = [&isOver] { isOver = true; };
  const auto action =
      UIAlertAction::actionWithTitle("Cancel", Style::cancel, [&done](const auto&) { done(); });
  const std::function<void(bool animated)> operations[] = {
      [&](bool animated) {
        SNWindow::sharedInstance()->initialize();
        SNWindow::sharedInstance()->presentViewController(alert, animated, done);
      },
      [&](bool animated) { alert->dismissViewControllerAnimated(animated, done); },
      [&](bool animated) { alert->_dismissAnimated(animated, action); },
      [&](bool animated) { alert->_dismissAnimated(animated, nullptr, false, done); }};
  for (const auto& operation : operations)
    for (const bool animated : {true, false}) {
      isOver = false;
      alert = newAlert();
      operation(animated);
      device.time().runDue();
      EXPECT_NE(isOver, animated);
      device.time().advance(UIViewController::transitionDuration);
      EXPECT_TRUE(isOver);
    }
}

TEST_F(SNAlertControllerTest, LivesAsLongAsATappedHandlerRuns) {
  const std::weak_ptr<SNAlertController> weakAlert = alert;
  bool lived = false;
  const auto action =
      UIAlertAction::actionWithTitle("Enter Passcode", Style::standard, [&, this](const auto&) {
        alert->dismissViewControllerAnimated(false, {});
        alert.reset();
        lived = !weakAlert.expired();
      });
  alert->addAction(action);
  present();
  alert->tap(action);
  EXPECT_TRUE(lived);
  device.time().runUntilIdle();
  EXPECT_TRUE(weakAlert.expired());
}

TEST_F(SNAlertControllerTest, AlertThatIsGoneBeforeTheReloadIsNotMissed) {
  const std::weak_ptr<SNAlertController> weakAlert = alert;
  alert->handleDismissAnimated(true, add("Enter Passcode"), false);
  alert.reset();
  EXPECT_TRUE(weakAlert.expired());
  device.time().runUntilIdle();
  EXPECT_THAT(ran, ElementsAre("Enter Passcode"));
}

class SNAlertControllerLog : public BridgeTest {};

TEST_F(SNAlertControllerLog, TellsOfTheDismissal) {
  enableLogging();
  inApp([] { newAlert()->dismissViewControllerAnimated(false, {}); });
  EXPECT_THAT(takeAppLog(), ElementsAre("Captured dismiss event of Alert..."));
}

// --- The legacy alert --------------------------------------------------------------------------

class SNAlertViewTest : public HomeScreenTest {
 protected:
  class Delegate final : public UIAlertViewDelegate {
   public:
    void alertView(UIAlertView& alertView, int didDismissWithButtonIndex) override {
      indexes.push_back(didDismissWithButtonIndex);
      title = alertView.buttonTitleAtIndex(didDismissWithButtonIndex);
    }
    std::vector<int> indexes;
    std::string title;
  };

  void show() {
    alert->addButtonWithTitle("Enter Passcode");
    alert->addButtonWithTitle("Other");
    alert->show();
  }

  std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
  std::shared_ptr<SNAlertView> alert =
      std::make_shared<SNAlertView>("Sentrel", std::nullopt, delegate, "Cancel");
};

TEST_F(SNAlertViewTest, SwitchButtonTellsTheDelegateAndTheAlertStays) {
  show();
  EXPECT_TRUE(tapButton("Enter Passcode"));
  EXPECT_THAT(delegate->indexes, ElementsAre(1)) << "at once";
  EXPECT_EQ(delegate->title, "Use Face ID") << "renamed by then";
  EXPECT_TRUE(tapButton("Use Face ID"));
  EXPECT_NE(visibleButton("Enter Passcode"), nullptr);
  device.time().runUntilIdle();
  EXPECT_THAT(delegate->indexes, ElementsAre(1, 1));
  EXPECT_TRUE(alert->isVisible());
}

TEST_F(SNAlertViewTest, SwitchButtonIsRenamedByTheOperationTheSystemHas) {
  std::vector<std::string> called;
  show();
  alert->_updateButtonTitle = [&called](const std::string& title, int index) {
    called.push_back("update " + title + " " + std::to_string(index));
  };
  alert->_changeButtonTitleAtIndex = [&called](int index, const std::string& title) {
    called.push_back("change " + title + " " + std::to_string(index));
  };
  alert->tap(1);
  alert->_updateButtonTitle = nullptr;
  alert->tap(1);
  alert->_changeButtonTitleAtIndex = nullptr;
  alert->tap(1);
  EXPECT_THAT(called, ElementsAre("update Use Face ID 1", "change Use Face ID 1"));
  EXPECT_THAT(delegate->indexes, ElementsAre(1, 1, 1));
  delegate.reset();
  alert->tap(1);
  EXPECT_TRUE(alert->isVisible());
}

TEST_F(SNAlertViewTest, EveryOtherButtonClosesItAndTheDelegateHearsOnce) {
  for (const int index : {0, 2}) {
    delegate->indexes.clear();
    alert = std::make_shared<SNAlertView>("Sentrel", std::nullopt, delegate, "Cancel");
    show();
    alert->tap(index);
    EXPECT_FALSE(alert->isVisible());
    device.time().runUntilIdle();
    EXPECT_THAT(delegate->indexes, ElementsAre(index));
  }
}

TEST_F(SNAlertViewTest, OnlyTheCancelButtonTakesTheInputAway) {
  useLegacyAlerts(true);
  const auto prompt = SNAuthenticationView::sharedInstance();
  prompt->setup("Mail", "Scan");
  alert->setAuthView(prompt);
  EXPECT_EQ(alert->authView(), prompt);
  EXPECT_EQ(alert->accessoryView(), prompt);
  show();
  prompt->switchToPasscodeView();
  EXPECT_TRUE(tapButton("Enter Passcode"));
  EXPECT_NE(focusedField(), nullptr);
  for (int index = 0; index < 4; ++index)
    EXPECT_EQ(alert->_prepareToDismissForTappedIndex(index), index == 0);
  EXPECT_TRUE(tapButton("Cancel"));
  EXPECT_EQ(focusedField(), nullptr);
}

}  // namespace
}  // namespace sentrel
