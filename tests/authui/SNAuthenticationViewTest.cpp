#include "sentrel/authui/SNAuthenticationView.h"

#include <gmock/gmock.h>

#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/authui/SNFakeCallIDView.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/uikit/Dump.h"
#include "tests/support/BridgeTest.h"
#include "tests/support/HomeScreenTest.h"
#include "tests/support/PromptDriver.h"

namespace sentrel {
namespace {

using testing::ElementsAre;

constexpr const char* newBundle = "/System/Library/PrivateFrameworks/PassKitUIFoundation.framework";
constexpr const char* oldBundle = "/System/Library/Frameworks/PassKit.framework";

/// Measures each face at a height of its own.
class SetHeights final : public TextMeasuring {
 public:
  SetHeights(double bold, double regular) : bold_(bold), regular_(regular) {}
  CGSize sizeOfText(std::string_view, const Font& font, double maxWidth) const override {
    widths_.push_back(maxWidth);
    return {10, font.bold ? bold_ : regular_};
  }
  const std::vector<double>& askedWidths() const { return widths_; }

 private:
  double bold_;
  double regular_;
  mutable std::vector<double> widths_;
};

template <class Interface>
struct Listener final : Interface {
  void passcodeMatchedSuccessfully() override { heard.push_back("matched"); }
  void passcodeNotMatched() override {
    heard.push_back(isShaking && isShaking() ? "not matched, shaking" : "not matched");
  }
  std::vector<std::string> heard;
  std::function<bool()> isShaking;
};

class SNAuthenticationViewTest : public HomeScreenTest {
 protected:
  void makeView() {
    view = SNAuthenticationView::initWithFrame();
    view->setDelegate(delegate);
    view->setFrame(CGRectMake(0, 0, 270, 200));
    window = showInWindow(view);
  }

  void dropView() {
    view.reset();
    window.reset();
  }

  std::shared_ptr<SetHeights> measureAs(double titleHeight, double messageHeight) {
    auto measuring = std::make_shared<SetHeights>(titleHeight, messageHeight);
    platform().textMeasuring = measuring;
    return measuring;
  }

  bool isShaking() {
    const auto& box = view->passcodeView()->digitTextFieldsArray()[0];
    return box->layer().animationForKey("shake").has_value();
  }

  std::string colors() {
    return view->titleLabel()->textColor().description() + " " +
           view->messageLabel()->textColor().description() + " " +
           view->glyphView()->primaryColor()->description();
  }

  void expectGlyphMode() {
    EXPECT_EQ(view->currentAuthenticationMode(), SNAuthenticationModeGlyph);
    EXPECT_FALSE(view->glyphView()->isHidden());
    EXPECT_EQ(view->glyphViewWidthConstraint()->constant(), 63);
    EXPECT_TRUE(view->passcodeView()->isHidden());
    EXPECT_EQ(focusedField(), nullptr);
  }

  void expectPasscodeMode() {
    EXPECT_EQ(view->currentAuthenticationMode(), SNAuthenticationModePasscode);
    EXPECT_TRUE(view->glyphView()->isHidden());
    EXPECT_EQ(view->glyphViewWidthConstraint()->constant(), 0);
    EXPECT_FALSE(view->passcodeView()->isHidden());
    EXPECT_EQ(view->passcodeViewHeightConstraint()->constant(), 46);
    EXPECT_EQ(focusedField(), view->passcodeView()->passcodeTextField());
  }

  std::shared_ptr<Listener<SNAuthenticationViewDelegate>> delegate =
      std::make_shared<Listener<SNAuthenticationViewDelegate>>();
  std::shared_ptr<SNAuthenticationView> view;
  std::shared_ptr<UIWindow> window;
};

// --- Building ----------------------------------------------------------------------------------

TEST_F(SNAuthenticationViewTest, StandsAsGlyphTitleAndMessageInLightMode) {
  makeView();
  view->setup("Mail", "Scan to unlock");
  view->layoutIfNeeded();
  EXPECT_EQ(dump(*view->glyphView()), "PKGlyphView (103.5 0 63 63)\n");
  EXPECT_EQ(
      dump(*view->titleLabel()),
      "UILabel (27 73 216 21) \"Mail\" font=\"system bold 17\" color=\"darkGrayColor\" center "
      "lines=0 background=\"clearColor\"\n");
  EXPECT_EQ(dump(*view->messageLabel()),
            "UILabel (27 104 216 17) \"Scan to unlock\" font=\"system 14\" "
            "color=\"darkGrayColor\" center lines=0 background=\"clearColor\"\n");
  EXPECT_EQ(view->passcodeView()->frame(), CGRectMake(0, 0, 270, 46));
  EXPECT_EQ(view->passcodeErrorLabel(), nullptr);
  EXPECT_EQ(view->glyphView()->style(), 2);
  expectGlyphMode();
}

TEST_F(SNAuthenticationViewTest, TakesOnTheAppearanceOfTheMomentItIsFilled) {
  makeView();
  useDarkMode();
  EXPECT_EQ(colors(), "darkGrayColor darkGrayColor grayColor");
  const std::string dark = "labelColor secondaryLabelColor secondaryLabelColor";
  view->setup("Mail", "Scan");
  EXPECT_EQ(colors(), dark);
  makeView();
  EXPECT_EQ(colors(), dark) << "made in it";
  EXPECT_EQ(view->passcodeView()->digitTextFieldsArray()[5]->textColor(), UIColor::labelColor());
}

TEST_F(SNAuthenticationViewTest, StartsWithAPlaceholderAndTheConfiguredMessage) {
  makeView();
  EXPECT_EQ(view->titleLabel()->text(), "My Title");
  EXPECT_EQ(view->messageLabel()->text(), SNUtils::authenticationMessage());
  EXPECT_EQ(view->preferredContentHeight(), 63 + 25 + 10 + 25 + 10 + 5);
}

TEST_F(SNAuthenticationViewTest, GlyphClassIsLoadedFromTheFirstBundleThatOpens) {
  const struct {
    bool hasNew;
    bool newLoads;
    bool hasOld;
    bool expected;
  } cases[] = {{true, true, true, true},
               {false, false, true, true},
               {false, false, false, false},
               {true, false, true, false}};
  for (const auto& each : cases) {
    restart("14.0");
    int loads = 0;
    const auto load = [&loads] {
      ++loads;
      Process::current().platform().glyphViewClass = std::make_shared<PKGlyphViewClass>();
    };
    device.libraries().removeBundle(newBundle);
    device.libraries().removeBundle(oldBundle);
    if (each.hasNew)
      device.libraries().installBundle(newBundle, each.newLoads ? load : std::function<void()>());
    if (each.hasOld) device.libraries().installBundle(oldBundle, load);
    makeView();
    makeView();
    EXPECT_EQ(view->glyphView() != nullptr, each.expected);
    EXPECT_EQ(loads, each.expected ? 1 : 0);
    dropView();
  }
}

TEST_F(SNAuthenticationViewTest, WithoutAGlyphEverythingElseWorks) {
  device.libraries().removeBundle(newBundle);
  makeView();
  bool completed = false;
  view->animateFingerPrintActions(6, true, [&completed] { completed = true; });
  view->setup("Mail", "Scan");
  view->setupGlyphViewTheme();
  view->layoutIfNeeded();
  EXPECT_EQ(view->titleLabel()->frame().origin.y, 73) << "the glyph's place stays empty";
  view->toggleAuthenticationModes();
  view->toggleAuthenticationModes();
  device.time().runUntilIdle();
  EXPECT_FALSE(completed);
  measureAs(20, 34);
  view->setup("Mail", "Scan");
  EXPECT_EQ(view->preferredContentHeight(), 142);
}

TEST_F(SNAuthenticationViewTest, PlainColourOperationComesFirstAndColourModeIsReset) {
  makeView();
  std::vector<std::string> called;
  view->glyphView()->setColorMode = [&called](std::int64_t mode, bool animated) {
    called.push_back("mode " + std::to_string(mode) + (animated ? " animated" : ""));
  };
  view->glyphView()->setPrimaryColor = [&called](const UIColor&) { called.push_back("plain"); };
  view->glyphView()->_setPrimaryColor = [&called](const UIColor&, bool animated) {
    called.push_back(animated ? "private animated" : "private");
  };
  view->setupGlyphViewTheme();
  view->glyphView()->setColorMode = nullptr;
  view->glyphView()->setPrimaryColor = nullptr;
  view->setupGlyphViewTheme();
  view->glyphView()->_setPrimaryColor = nullptr;
  view->setupGlyphViewTheme();
  EXPECT_THAT(called, ElementsAre("mode 0", "plain", "private"));
}

// --- Filling -----------------------------------------------------------------------------------

TEST_F(SNAuthenticationViewTest, PreferredHeightIsTheGlyphsAndTheTextsInEitherMode) {
  makeView();
  const auto measuring = measureAs(20, 34);
  view->setup("Mail", "Scan");
  EXPECT_EQ(view->preferredContentHeight(), 142);
  EXPECT_THAT(measuring->askedWidths(), testing::Each(187.5)) << "half the screen";
  view->switchToPasscodeView();
  EXPECT_EQ(view->preferredContentHeight(), 142);
}

TEST_F(SNAuthenticationViewTest, LegacyAlertAndNoOtherGetsItsHeightFromTheTitleAlone) {
  makeView();
  view->setup("Mail", "Scan");
  EXPECT_EQ(view->frame(), CGRectMake(0, 0, 270, 200));
  useLegacyAlerts(true);
  EXPECT_EQ(view->heightConstraint(), nullptr);
  for (const double messageHeight : {17.0, 900.0}) {
    measureAs(40, messageHeight);
    view->setup("Mail", "Scan");
    EXPECT_EQ(view->frame(), CGRectMake(0, 0, 270, 170));
    EXPECT_EQ(view->heightConstraint()->constant(), 170);
  }
  const auto constraint = view->heightConstraint();
  measureAs(20, 17);
  view->setup("Mail", "Scan");
  EXPECT_EQ(view->heightConstraint(), constraint);
  EXPECT_EQ(constraint->constant(), 150);
}

TEST_F(SNAuthenticationViewTest, NoTextTakesNoRoomAndAnEmptyOneALine) {
  makeView();
  view->setup(std::nullopt, "");
  EXPECT_EQ(view->titleLabel()->text(), "");
  EXPECT_EQ(view->titleLabelHeightConstraint()->constant(), 0);
  view->layoutIfNeeded();
  EXPECT_EQ(view->messageLabel()->frame().origin.y, 63 + 10 + 10) << "what was measured";
  EXPECT_DOUBLE_EQ(view->messageLabelHeightConstraint()->constant(), 14 * 1.2);
}

TEST_F(SNAuthenticationViewTest, MeasuringStopsAtTheGivenHeight) {
  const UIFont font = UIFont::systemFontOfSize(14);
  const std::string longText(10'000, 'W');
  const auto mode = NSLineBreakMode::byWordWrapping;
  EXPECT_EQ(SNAuthenticationView::sizeWithString(longText, font, {20, 9999}, mode).height, 9999);
  EXPECT_EQ(SNAuthenticationView::sizeWithString(std::nullopt, font, {20, 9999}, mode), CGSize{});
  makeView();
  view->setup(longText, std::string("\xff\xfe e\u0301 \u05d0"));
  view->layoutIfNeeded();
  EXPECT_GT(view->messageLabel()->frame().origin.y, view->titleLabel()->frame().origin.y);
}

// --- Modes -------------------------------------------------------------------------------------

TEST_F(SNAuthenticationViewTest, TogglesBetweenGlyphAndPasscode) {
  makeView();
  view->toggleAuthenticationModes();
  expectPasscodeMode();
  type("12");
  view->toggleAuthenticationModes();
  expectGlyphMode();
  EXPECT_EQ(view->passcodeViewHeightConstraint()->constant(), 0);
  EXPECT_EQ(view->passcodeView()->passcodeTextField()->text(), "");
  view->switchToPasscodeView();
  expectPasscodeMode();
  type("123");
  view->setup("Mail", "Scan");
  EXPECT_EQ(view->passcodeView()->passcodeTextField()->text(), "") << "filled anew";
  EXPECT_FALSE(view->passcodeView()->digitTextFieldsArray()[0]->isSecureTextEntry());
}

TEST_F(SNAuthenticationViewTest, StoredModeIsANumberThatShowsNothing) {
  makeView();
  for (const SNAuthenticationMode mode : {0, 3, -1}) {
    view->setCurrentAuthenticationMode(mode);
    view->toggleAuthenticationModes();
    EXPECT_EQ(view->currentAuthenticationMode(), mode);
    EXPECT_FALSE(view->glyphView()->isHidden());
  }
  view->setCurrentAuthenticationMode(SNAuthenticationModePasscode);
  EXPECT_TRUE(view->passcodeView()->isHidden());
}

TEST_F(SNAuthenticationViewTest, PasscodeStateIsResetOnlyWhileTheRowIsShown) {
  makeView();
  const auto field = view->passcodeView()->passcodeTextField();
  field->setText("12");
  view->resetPasscodeState();
  EXPECT_EQ(field->text(), "12");
  EXPECT_EQ(focusedField(), nullptr);
  view->switchToPasscodeView();
  type("12");
  view->hideKeyboard();
  view->resetPasscodeState();
  EXPECT_EQ(field->text(), "");
  EXPECT_EQ(focusedField(), field) << "at once";
}

TEST_F(SNAuthenticationViewTest, RowOfAPromptThatIsGoneTakesNoInput) {
  makeView();
  view->switchToPasscodeView();
  EXPECT_TRUE(type("12"));
  window.reset();
  EXPECT_EQ(focusedField(), nullptr);
  view->resetPasscodeState();
  EXPECT_EQ(focusedField(), nullptr);
  EXPECT_EQ(view->passcodeView()->passcodeTextField()->text(), "");
  view->passcodeView()->_denyAccess();
  device.time().runUntilIdle();
  EXPECT_EQ(focusedField(), nullptr) << "nor after the pause";
}

TEST_F(SNAuthenticationViewTest, GlyphGetsStateAnimationAndCompletionUnchanged) {
  makeView();
  int completed = 0;
  view->animateFingerPrintActions(12, /*animated=*/true, [&completed] { ++completed; });
  EXPECT_EQ(view->glyphView()->state(), 12);
  advance(0.34);
  EXPECT_EQ(completed, 0);
  advance(0.02);
  EXPECT_EQ(completed, 1);
  view->animateFingerPrintActions(0, /*animated=*/false, [&completed] { ++completed; });
  EXPECT_EQ(completed, 1) << "on a later turn";
  device.time().runDue();
  EXPECT_EQ(completed, 2);
  view->animateFingerPrintActions(3, true, {});
  EXPECT_TRUE(view->glyphView()->layer().animationForKey("state").has_value());
  view->glyphView()->setState = nullptr;
  view->animateFingerPrintActions(4, true, {});
  EXPECT_EQ(view->glyphView()->state(), 3);
}

// --- Checking ----------------------------------------------------------------------------------

TEST_F(SNAuthenticationViewTest, WrongPasscodeShakesBeforeItIsToldAndTheRightOneDoesNot) {
  storePasscode("123456");
  for (const auto& [passcode, told] :
       {std::pair("123456", "matched"), {"654321", "not matched, shaking"}}) {
    makeView();
    delegate->heard.clear();
    delegate->isShaking = [this] { return isShaking(); };
    view->switchToPasscodeView();
    EXPECT_TRUE(type(passcode));
    advance(0.15);
    EXPECT_THAT(delegate->heard, ElementsAre(told));
    EXPECT_EQ(isShaking(), passcode == std::string("654321"));
  }
  EXPECT_EQ(focusedField()->text(), "");
}

TEST_F(SNAuthenticationViewTest, VerdictOnARowThatWasLeftMeanwhileTakesNoInput) {
  makeView();
  view->switchToPasscodeView();
  type("654321");
  advance(0.1);
  view->toggleAuthenticationModes();
  device.time().runUntilIdle();
  EXPECT_THAT(delegate->heard, ElementsAre("not matched"));
  expectGlyphMode();
}

TEST_F(SNAuthenticationViewTest, AnswersWithoutAStoredPasscodeAndWithoutADelegate) {
  makeView();
  delegate.reset();
  EXPECT_FALSE(view->_validatePasscode(""));
  storePasscode("123456");
  EXPECT_TRUE(view->_validatePasscode("123456"));
  EXPECT_FALSE(view->_validatePasscode(std::string(10'000, '1')));
}

// --- The controller ----------------------------------------------------------------------------

class SNAuthenticationViewControllerTest : public HomeScreenTest {};

TEST_F(SNAuthenticationViewControllerTest, SharedOnesAreMadeOnceAProcessAndDiffer) {
  const auto controller = SNAuthenticationViewController::sharedInstance();
  EXPECT_EQ(SNAuthenticationViewController::sharedInstance(), controller);
  EXPECT_TRUE(controller->isViewLoaded());
  EXPECT_EQ(controller->currentAuthenticationMode(), SNAuthenticationModeGlyph);
  EXPECT_NE(SNAuthenticationView::sharedInstance(), controller->view());
  EXPECT_EQ(SNAuthenticationView::sharedInstance(), SNAuthenticationView::sharedInstance());
  EXPECT_EQ(SNSimplePasscodeView::sharedInstance(), SNSimplePasscodeView::sharedInstance());
  const auto other = device.launch("com.example.app");
  EXPECT_NE(other->run([] { return SNAuthenticationViewController::sharedInstance(); }),
            controller);
}

TEST_F(SNAuthenticationViewControllerTest, ForwardsToItsViewAndFromItToTheDelegate) {
  storePasscode("123456");
  const auto controller = SNAuthenticationViewController::sharedInstance();
  const auto window = showInWindow(controller->view());
  const auto delegate = std::make_shared<Listener<SNAuthenticationDelegate>>();
  controller->setDelegate(delegate);
  controller->setPreferredContentSize({300, 1});
  SNAuthenticationView& view = *controller->authenticationView();

  controller->setup("Mail", "Scan");
  EXPECT_EQ(view.titleLabel()->text(), "Mail");
  EXPECT_EQ(controller->preferredContentSize(), (CGSize{300, view.preferredContentHeight()}));
  controller->animateFingerPrintActions(7, false, {});
  EXPECT_EQ(view.glyphView()->state(), 7);
  controller->toggleAuthenticationModes();
  EXPECT_EQ(controller->currentAuthenticationMode(), SNAuthenticationModePasscode);
  for (const char* passcode : {"111111", "123456"}) {
    EXPECT_TRUE(type(passcode));
    advance(1);
    controller->resetPasscodeState();
  }
  EXPECT_THAT(delegate->heard, ElementsAre("not matched", "matched"));
  controller->hideKeyboard();
  EXPECT_EQ(focusedField(), nullptr);
  controller->switchToGlyphView();
  EXPECT_FALSE(view.glyphView()->isHidden());
}

TEST_F(SNAuthenticationViewControllerTest, WithAViewOfAnotherKindHasNeitherModeNorHeight) {
  const auto controller = SNAuthenticationViewController::sharedInstance();
  controller->setView(std::make_shared<UIView>());
  controller->setup("Mail", "Scan");
  controller->toggleAuthenticationModes();
  controller->animateFingerPrintActions(7, false, {});
  controller->showKeyboard();
  controller->resetPasscodeState();
  controller->setCurrentAuthenticationMode(SNAuthenticationModePasscode);
  EXPECT_EQ(controller->currentAuthenticationMode(), 0);
  EXPECT_EQ(controller->preferredContentSize().height, 0);
  EXPECT_EQ(controller->authenticationView(), nullptr);
}

// --- What is asked of the home screen ------------------------------------------------------------

class AppearanceOfAnApplication : public BridgeTest {};

TEST_F(AppearanceOfAnApplication, IsAskedForOnceForAllThatIsColouredTogether) {
  inApp([this] {
    const auto asked = [this](const auto& action) {
      takeRequests();
      action();
      return std::ranges::count(takeRequests(), "com.quorvin.sentrel.device.darkmode.enabled");
    };
    std::shared_ptr<SNAuthenticationView> view;
    EXPECT_EQ(asked([&] { view = SNAuthenticationView::initWithFrame(); }), 1);
    EXPECT_EQ(asked([&] { view->setup("Mail", "Scan"); }), 1);
    EXPECT_EQ(asked([&] { view->passcodeView()->setupDigitFields(); }), 1);
    SNFakeCallIDView cover;
    EXPECT_EQ(asked([&] { cover.updateData(); }), 1);
  });
}

}  // namespace
}  // namespace sentrel
