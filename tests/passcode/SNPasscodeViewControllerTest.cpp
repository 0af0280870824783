#include "sentrel/passcode/SNPasscodeViewController.h"

#include <numbers>

#include "sentrel/passcode/PasscodeLayout.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UINavigationController.h"
#include "tests/passcode/RecordedFlow.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class SNPasscodeViewControllerTest : public HomeScreenTest {
 protected:
  SNPasscodeViewControllerTest() { start(); }

  ~SNPasscodeViewControllerTest() override { end(); }

  void start() {
    window = std::make_shared<UIWindow>(device.screen().bounds());
    window->setHidden(false);
    host = std::make_shared<UIViewController>();
    navigation = UINavigationController::initWithRootViewController(host);
    window->setRootViewController(navigation);
    screen = SNPasscodeViewController::sharedUser();
    screen->setDelegate(delegate);
  }

  void end() {
    screen.reset();
    host.reset();
    navigation.reset();
    window.reset();
  }

  void restartOn(const std::string& version) {
    end();
    restart(version);
    start();
  }

  void post(std::string_view name) {
    platform().localCenter->post({std::string(name), std::nullopt});
    advance(0);
  }

  /// One digit after the other, on the keyboard.
  void type(const std::string& text) {
    const auto& box = screen->elements().digitTextFieldsArray.front();
    box->becomeFirstResponder();
    for (const char each : text)
      screen->elements().passcodeTextField->insertText(std::string(1, each));
    advance(1);
  }

  std::string masks() const {
    std::string result;
    for (const auto& box : screen->elements().digitTextFieldsArray)
      result += box->isSecureTextEntry() ? 'x' : '-';
    return result;
  }

  PasscodeLog log{device};
  std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>(log);
  std::shared_ptr<UIWindow> window;
  std::shared_ptr<UIViewController> host;
  std::shared_ptr<UINavigationController> navigation;
  std::shared_ptr<SNPasscodeViewController> screen;
};

// --- Looks ---------------------------------------------------------------------------------------

TEST_F(SNPasscodeViewControllerTest, DefaultsGoByTheDeviceAndItsLight) {
  const struct {
    std::optional<UIUserInterfaceIdiom> idiom;
    UIUserInterfaceStyle style;
    std::vector<double> gaps;
    const char* fonts;
    const char* colours;
  } cases[] = {
      {UIUserInterfaceIdiom::phone,
       UIUserInterfaceStyle::light,
       {1, 40, 25, 3, 73, 40, 14},
       "AvenirNext-Regular 15 AvenirNext-Regular 33",
       "rgb 0.97 0.97 1|rgb 0.97 0.97 1|white 0.31|white 0.31|whiteColor"},
      {std::nullopt,
       UIUserInterfaceStyle::dark,
       {1, 40, 25, 3, 73, 40, 14},
       "AvenirNext-Regular 15 AvenirNext-Regular 33",
       "systemBackgroundColor|systemBackgroundColor|labelColor|labelColor|systemBackgroundColor"},
      {UIUserInterfaceIdiom::pad,
       UIUserInterfaceStyle::light,
       {1.5, 60, 60, 2.5999999046325684, 2.5999999046325684 * 60 - 2, 96, 19},
       "AvenirNext-Regular 22.5 AvenirNext-Regular 49.5",
       "rgb 0.97 0.97 1|rgb 0.97 0.97 1|white 0.31|white 0.31|whiteColor"},
  };
  for (const auto& each : cases) {
    device.screen().setUserInterfaceIdiom(each.idiom);
    device.screen().setUserInterfaceStyle(each.style);
    screen->appearance().verticalGap = 7;
    screen->_loadDefaults();
    delegate->stored = "1234";
    screen->_denyAccess();
    const PasscodeAppearance& a = screen->appearance();
    EXPECT_THAT((std::vector{a.fontSizeModifier, a.horizontalGap, a.verticalGap,
                             a.modifierForBottomVerticalGap, a.failedAttemptLabelGap,
                             a.passcodeOverlayHeight, screen->display().failureCornerRadius}),
                testing::ElementsAreArray(each.gaps));
    EXPECT_EQ(a.labelFont.description() + " " + a.passcodeFont.description(), each.fonts);
    EXPECT_EQ(a.backgroundColor.description() + "|" + a.coverViewBackgroundColor.description() +
                  "|" + a.labelTextColor.description() + "|" + a.passcodeTextColor.description() +
                  "|" + a.failedAttemptLabelTextColor.description(),
              each.colours);
    EXPECT_EQ(a.failedAttemptLabelBackgroundColor, UIColor::colorWithRed(0.8F, 0.1F, 0.2F, 1));
  }
  EXPECT_EQ(screen->appearance().coverViewTag, 994499);
}

TEST_F(SNPasscodeViewControllerTest, EverythingStandsInsideTheScreenAndApart) {
  for (const CGSize size :
       {CGSize{320, 568}, {568, 320}, {414, 896}, {896, 414}, {768, 1024}, {1024, 768}})
    for (const int boxes : {4, 6, 10, 12})
      for (const bool isEditing : {false, true}) {
        const bool isTablet = size.width >= 768 && size.height >= 768;
        const auto appearance = PasscodeAppearance::defaults(isTablet, [] { return false; });
        PasscodeContent content{.screen = size,
                                .top = 64,
                                .boxes = boxes,
                                .prompt = {200, 20},
                                .info = {100, 20},
                                .failure = {220, 28}};
        content.bottom = isEditing ? size.height > size.width ? 264 : 162 : 0;
        const PasscodePlaces places = placePasscode(content, appearance);
        const double row = places.boxCenters.front().y;
        const double halfRow = 8;  // of a dash or a bullet
        EXPECT_GE(places.prompt.origin.y, content.top);
        EXPECT_GE(row - halfRow, places.prompt.maxY());
        EXPECT_GE(places.failure.origin.y, row + halfRow);
        EXPECT_LE(places.failure.maxY(), size.height - content.bottom) << size.height;
        const double halfBox = appearance.horizontalGap * places.boxScale / 2;
        EXPECT_GE(places.boxCenters.front().x - halfBox, 0);
        EXPECT_LE(places.boxCenters.back().x + halfBox, size.width);
        EXPECT_NEAR(places.boxCenters[1].x - places.boxCenters[0].x, 2 * halfBox, 1e-9);
      }
}

TEST_F(SNPasscodeViewControllerTest, TheFreeTextFieldStandsBesideItsButton) {
  screen->view();
  screen->setIsSimple(false, nullptr, /*asModal=*/true);
  screen->showForEnablingPasscodeInViewController(host, /*asModal=*/true);
  advance(1);
  window->layoutIfNeeded();
  const auto& [background, container, prompt, info, failure, boxes, overlay, field, button, bar] =
      screen->elements();
  EXPECT_EQ(field->frame().origin, (CGPoint{10, 5}));
  EXPECT_EQ(field->frame().maxY(), overlay->bounds().size.height - 5);
  EXPECT_EQ(button->frame().origin.x, field->frame().maxX() + 5);
  EXPECT_EQ(button->frame().maxX(), overlay->bounds().size.width - 10);
  EXPECT_EQ(overlay->bounds().size.height, 40);
  field->insertText("a word");
  EXPECT_FALSE(button->isHidden() || overlay->isHidden());
  button->tap();
  EXPECT_EQ(screen->tempPasscode(), "a word");
}

// --- Typing --------------------------------------------------------------------------------------

TEST_F(SNPasscodeViewControllerTest, AStoredPasscodeHasItsBoxesAndOpensTheLock) {
  delegate->stored = "123456";
  screen->showLockScreenWithAnimation(/*animated=*/true, /*withLogout=*/false, "");
  advance(1);
  EXPECT_THAT(screen->elements().digitTextFieldsArray, SizeIs(6));
  EXPECT_EQ(screen->view()->superview(), window);
  type("12");
  EXPECT_EQ(masks(), "xx----");
  type("9999");
  EXPECT_EQ(masks(), "------");
  const auto& box = screen->elements().digitTextFieldsArray.front();
  EXPECT_EQ(box->layer().animations().front().key, "shake");
  EXPECT_EQ(screen->elements().failedAttemptLabel->text(), "1 Passcode Failed Attempt     ");
  type("123456");
  EXPECT_EQ(screen->view()->superview(), nullptr);
  // One of another length has come in its place.
  delegate->stored = "1234";
  screen->showLockscreenWithoutAnimation();
  advance(1);
  EXPECT_EQ(masks(), "----");
  EXPECT_EQ(screen->view()->frame(), window->bounds());
  type("1234");
  EXPECT_FALSE(screen->isCurrentlyOnScreen());
}

TEST_F(SNPasscodeViewControllerTest, StepsSlideTheContainer) {
  screen->showForEnablingPasscodeInViewController(host, /*asModal=*/true);
  type("123");
  screen->elements().passcodeTextField->insertText("4");
  std::optional<CAAnimation> slide;
  for (int i = 0; i < 50 && !slide; ++i) {
    advance(0.02);
    slide = screen->elements().animatingView->layer().animationForKey("swipe");
  }
  ASSERT_TRUE(slide);
  EXPECT_EQ(slide->kind, CAAnimation::Kind::pushFromRight);
}

// --- Presentation --------------------------------------------------------------------------------

TEST_F(SNPasscodeViewControllerTest, SettingsFlowsComeAboveTheHostOrInItsNavigation) {
  screen->setHidesCancelButton(false);
  screen->appearance().navigationTitleColor = UIColor::systemBlueColor();
  screen->showForEnablingPasscodeInViewController(host, /*asModal=*/true);
  const auto modal =
      std::dynamic_pointer_cast<UINavigationController>(host->presentedViewController());
  ASSERT_TRUE(modal);
  EXPECT_EQ(modal->topViewController(), screen);
  EXPECT_EQ(modal->navigationBar()->titleColor(), UIColor::systemBlueColor());
  EXPECT_EQ(modal->navigationBar()->topItem()->title(), "Enable Sentrel Passcode");
  screen->navigationItem()->rightBarButtonItem()->action();
  EXPECT_EQ(host->presentedViewController(), nullptr);
  EXPECT_FALSE(screen->isCurrentlyOnScreen());

  // Going back closes a screen that shows the way back.
  screen->setHidesBackButton(false);
  screen->showForEnablingPasscodeInViewController(host, /*asModal=*/false);
  EXPECT_TRUE(screen->isCurrentlyOnScreen());
  EXPECT_EQ(navigation->topViewController(), screen);
  navigation->popViewControllerAnimated(/*animated=*/true);
  EXPECT_FALSE(screen->isCurrentlyOnScreen());
  EXPECT_EQ(navigation->topViewController(), host);
}

TEST_F(SNPasscodeViewControllerTest, ALogoutButtonStandsInABarOfTheLockScreen) {
  delegate->stored = "1234";
  screen->showLockScreenWithAnimation(/*animated=*/false, /*withLogout=*/true, "Log out");
  advance(1);  // a fingerprint is not allowed: falling back makes the bar anew
  const auto& bar = screen->elements().navBar;
  ASSERT_TRUE(bar && screen->isUsingNavBar());
  EXPECT_EQ(bar->topItem()->leftBarButtonItem()->title, "Log out");
  bar->topItem()->leftBarButtonItem()->action();
  EXPECT_THAT(log.take(), ElementsAre("1.00 logoutButtonWasPressed"));
  screen->_resetUI();
  EXPECT_FALSE(screen->elements().navBar);
}

// --- Life-cycle ----------------------------------------------------------------------------------

TEST_F(SNPasscodeViewControllerTest, NotificationsReachTheFlowOnceEach) {
  delegate->stored = "1234";
  delegate->timerEnded = true;
  screen->enablePasscodeWhenApplicationEntersBackground();
  screen->view();
  screen->_addObservers();
  screen->enablePasscodeWhenApplicationEntersBackground();
  EXPECT_TRUE(screen->isAppNotificationsObserved());
  post(UIApplicationWillResignActiveNotification);
  EXPECT_THAT(log.take(), ElementsAre("0.00 saveTimerStartTime"));
  post(UIApplicationDidEnterBackgroundNotification);
  EXPECT_EQ(window->viewWithTag(994499), screen->coverView());
  EXPECT_FALSE(screen->coverView()->isHidden());
  screen->disablePasscodeWhenApplicationEntersBackground();
  post(UIApplicationWillEnterForegroundNotification);
  EXPECT_FALSE(screen->isCurrentlyOnScreen());
  post(UIApplicationDidBecomeActiveNotification);
  EXPECT_TRUE(screen->coverView()->isHidden());
  screen->enablePasscodeWhenApplicationEntersBackground();
  post(UIApplicationWillEnterForegroundNotification);
  EXPECT_TRUE(screen->isCurrentlyOnScreen() && screen->displayedAsLockScreen());
}

// --- Orientation ---------------------------------------------------------------------------------

TEST_F(SNPasscodeViewControllerTest, OnlyOldSystemsHaveTheLockScreenTurnItself) {
  const struct {
    const char* version;
    UIInterfaceOrientation orientation;
    std::uint64_t supported;
    std::int64_t desired;
    CGSize inside;
  } cases[] = {{"7.1", UIInterfaceOrientation::landscapeRight, 30, 3, {667, 375}},
               {"7.1", UIInterfaceOrientation::landscapeLeft, 30, 4, {667, 375}},
               {"7.1", UIInterfaceOrientation::portraitUpsideDown, 30, 2, {375, 667}},
               {"10.2", UIInterfaceOrientation::landscapeLeft, 2, 1, {375, 667}}};
  for (const auto& each : cases) {
    restartOn(each.version);
    EXPECT_EQ(screen->supportedInterfaceOrientations(), 2U);
    delegate->stored = "1234";
    screen->showLockscreenWithoutAnimation();
    UIApplication::sharedApplication().setStatusBarOrientation(each.orientation);
    post(UIApplicationDidChangeStatusBarOrientationNotification);
    EXPECT_EQ(screen->supportedInterfaceOrientations(), each.supported);
    EXPECT_EQ(screen->desiredOrientation(), each.desired);
    EXPECT_EQ(
        screen->view()->transform(),
        CGAffineTransform::makeRotation(UIInterfaceOrientationAngleOfOrientation(each.desired)));
    const CGSize inside = screen->elements().animatingView->bounds().size;
    EXPECT_NEAR(inside.width, each.inside.width, 1e-6);
    EXPECT_NEAR(inside.height, each.inside.height, 1e-6);
    EXPECT_NEAR(screen->view()->frame().size.width, 375, 1e-6);
  }
}

TEST_F(SNPasscodeViewControllerTest, OrientationsAreNumbers) {
  const double pi = std::numbers::pi;
  const std::pair<std::int64_t, double> angles[] = {{0, 0},      {1, 0},       {2, pi},
                                                    {3, pi / 2}, {4, -pi / 2}, {5, 0}};
  for (const auto& [orientation, angle] : angles)
    EXPECT_EQ(UIInterfaceOrientationAngleOfOrientation(orientation), angle);
  EXPECT_EQ(UIInterfaceOrientationMaskFromOrientation(4), 16U);
  EXPECT_EQ(UIInterfaceOrientationMaskFromOrientation(-1), 0U);
  UIApplication& application = UIApplication::sharedApplication();
  application.setStatusBarFrame(CGRectMake(0, 0, 20, 667));
  for (const auto& [orientation, height] :
       {std::pair(1, 667.0), {2, 667.0}, {3, 20.0}, {4, 20.0}}) {
    application.setStatusBarOrientation(static_cast<UIInterfaceOrientation>(orientation));
    EXPECT_EQ(SNPasscodeViewController::getStatusBarHeight(), height);
  }
}

}  // namespace
}  // namespace sentrel
