#include "sentrel/authui/SNSimplePasscodeView.h"

#include <gmock/gmock.h>

#include "sentrel/uikit/Dump.h"
#include "tests/support/HomeScreenTest.h"
#include "tests/support/PromptDriver.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::SizeIs;

class Validator final : public SNSimplePasscodeViewDelegate {
 public:
  explicit Validator(std::vector<std::string>& typed) : typed_(typed) {}
  bool _validatePasscode(const std::string& passcode) override {
    typed_.push_back(passcode);
    return true;
  }

 private:
  std::vector<std::string>& typed_;
};

class SNSimplePasscodeViewTest : public HomeScreenTest {
 protected:
  void makeRow(std::int64_t digits = 6) {
    row = SNSimplePasscodeView::initWithFrame(CGRectMake(0, 0, 270, 46));
    row->setDelegate(validator);
    row->setDigitsCount(digits);
    row->setupDigitFields();
    rowWindow = showInWindow(row);
  }

  void dropRow() {
    row.reset();
    rowWindow.reset();
  }

  std::shared_ptr<UITextField> field() { return row->passcodeTextField(); }
  std::shared_ptr<UITextField> box(std::size_t at) { return row->digitTextFieldsArray().at(at); }

  /// One letter a box, left to right: "x" where it is masked.
  std::string masks() {
    std::string result;
    for (const auto& each : row->digitTextFieldsArray())
      result += each->isSecureTextEntry() ? 'x' : '-';
    return result;
  }

  std::vector<double> leftEdges() {
    row->layoutIfNeeded();
    std::vector<double> edges;
    for (const auto& each : row->digitTextFieldsArray()) {
      EXPECT_EQ(each->frame().origin.y, 0);
      EXPECT_EQ(each->frame().size.height, 46);
      edges.push_back(each->frame().origin.x);
    }
    return edges;
  }

  static constexpr void (*clearings[])(SNSimplePasscodeView& row) = {
      [](auto& row) { row._resetTextFields(); }, [](auto& row) { row._denyAccess(); },
      [](auto& row) { row._resetTextFields(/*delayed=*/false); }};

  std::vector<std::string> typed;
  std::shared_ptr<Validator> validator = std::make_shared<Validator>(typed);
  std::shared_ptr<SNSimplePasscodeView> row;
  std::shared_ptr<UIWindow> rowWindow;
};

// --- Boxes -------------------------------------------------------------------------------------

TEST_F(SNSimplePasscodeViewTest, BoxesShowADashInTheColoursAndSizeOfTheDevice) {
  const struct {
    std::optional<UIUserInterfaceIdiom> idiom;
    UIUserInterfaceStyle style;
    std::string look;
  } cases[] = {
      {UIUserInterfaceIdiom::phone, UIUserInterfaceStyle::light, "33\" color=\"white 0.31\""},
      {UIUserInterfaceIdiom::phone, UIUserInterfaceStyle::dark, "33\""},
      {UIUserInterfaceIdiom::pad, UIUserInterfaceStyle::light, "49.5\" color=\"white 0.31\""},
      {std::nullopt, UIUserInterfaceStyle::light, "33\" color=\"white 0.31\""}};
  for (const auto& each : cases) {
    device.screen().setUserInterfaceIdiom(each.idiom);
    device.screen().setUserInterfaceStyle(each.style);
    makeRow();
    const std::string look =
        "font=\"AvenirNext-Regular " + each.look + " center keyboard=4 tint=\"clearColor\"";
    const std::string end = " background=\"clearColor\"\n";
    EXPECT_THAT(row->digitTextFieldsArray(), SizeIs(6));
    EXPECT_THAT(dump(*field()), EndsWith("\"\" " + look + " hidden" + end));
    for (const auto& made : row->digitTextFieldsArray()) {
      EXPECT_THAT(dump(*made), EndsWith("\"—\" " + look + end));
      EXPECT_EQ(made->borderStyle(), UITextBorderStyle::none);
    }
  }
}

TEST_F(SNSimplePasscodeViewTest, BoxesStandAsFarApartAsTheDeviceAndTheAlertWant) {
  const struct {
    bool legacy;
    std::optional<UIUserInterfaceIdiom> idiom;
    std::vector<double> expected;
  } cases[] = {{false, UIUserInterfaceIdiom::phone, {0, 40, 80, 120, 160, 200}},
               {false, std::nullopt, {0, 40, 80, 120, 160, 200}},
               {false, UIUserInterfaceIdiom::pad, {0, 60, 120, 180, 240, 300}},
               {true, UIUserInterfaceIdiom::phone, {25, 65, 105, 145, 185, 225}},
               {true, UIUserInterfaceIdiom::pad, {-30, 30, 90, 150, 210, 270}}};
  for (const auto& each : cases) {
    useLegacyAlerts(each.legacy);
    device.screen().setUserInterfaceIdiom(each.idiom);
    makeRow();
    EXPECT_EQ(leftEdges(), each.expected);
  }
  const CGRect hidden = field()->frame();
  EXPECT_EQ(hidden.size, (CGSize{216, 0}));
  EXPECT_EQ(hidden.midX(), 135);
}

TEST_F(SNSimplePasscodeViewTest, SettingUpAgainReplacesEverything) {
  makeRow(6);
  row->layoutIfNeeded();
  row->setDigitsCount(2);
  row->setupDigitFields();
  EXPECT_THAT(row->subviews(), SizeIs(3));
  EXPECT_EQ(leftEdges(), (std::vector<double>{0, 40}));
  row->setDigitsCount(-1);
  row->setupDigitFields();
  EXPECT_THAT(row->subviews(), ElementsAre(field()));
}

// --- Typing ------------------------------------------------------------------------------------

TEST_F(SNSimplePasscodeViewTest, MasksABoxForEveryDigitTypedAndUnmasksForEveryOneDeleted) {
  makeRow();
  row->showKeyboard();
  EXPECT_TRUE(type("123"));
  EXPECT_EQ(masks(), "xxx---");
  EXPECT_TRUE(field()->deleteBackward());
  EXPECT_EQ(masks(), "xx----");
  EXPECT_EQ(box(0)->displayedText(), "\u2022");
  EXPECT_EQ(box(2)->displayedText(), "\u2014");
}

TEST_F(SNSimplePasscodeViewTest, HandsTheFullPasscodeOverOnceAfterAPause) {
  makeRow();
  row->showKeyboard();
  EXPECT_TRUE(type("123456"));
  EXPECT_EQ(masks(), "xxxxxx");
  advance(0.149);
  EXPECT_THAT(typed, ElementsAre());
  advance(0.002);
  device.time().runUntilIdle();
  EXPECT_THAT(typed, ElementsAre("123456"));
}

TEST_F(SNSimplePasscodeViewTest, EditsAreTakenUpToTheFullLengthAndNoFurther) {
  const struct {
    const char* before;
    NSRange range;
    const char* pasted;
    const char* after;
    const char* masks;
    bool validates;
  } cases[] = {
      {"", {0, 0}, "123456", "123456", "xxxxxx", true},
      {"", {0, 0}, "1234567", "", "xxxxxx", false},
      {"123456", {6, 0}, "7", "123456", "xxxxxx", false},
      {"123456", {0, 6}, "98", "98", "xx----", false},
      {"12345", {0, 1}, "67", "672345", "xxxxxx", true},
      {"123", {99, 99}, "4", "1234", "xxxx--", false},
      {"123", {2, 99}, "", "12", "xx----", false},
      {"123", {0, 0}, "\n", "123", "------", false},
      {"", {0, 0}, "4\n5", "4\n5", "xxx---", false},
      {"",
       {0, 0},
       "\xf0\x9f\x94\x92\xf0\x9f\x94\x91\xf0\x9f\x94\x92",
       "\xf0\x9f\x94\x92\xf0\x9f\x94\x91\xf0\x9f\x94\x92",
       "xxxxxx",
       true},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(std::string(each.before) + " + " + each.pasted);
    typed.clear();
    makeRow();
    field()->becomeFirstResponder();
    field()->setText(each.before);
    field()->replace(each.range, each.pasted);
    EXPECT_EQ(field()->text(), each.after);
    EXPECT_EQ(masks(), each.masks);
    device.time().runUntilIdle();
    EXPECT_EQ(!typed.empty(), each.validates);
  }
}

TEST_F(SNSimplePasscodeViewTest, DelegateAskedForRangesBeyondTheTextStaysInsideIt) {
  makeRow();
  field()->setText("123");
  EXPECT_TRUE(row->textField(*field(), {50, 7}, "4"));
  EXPECT_EQ(masks(), "xxxx--");
  EXPECT_FALSE(row->textField(*field(), {1, 1000}, std::string(10'000, '9')));
  EXPECT_EQ(masks(), "xxxxxx");
}

TEST_F(SNSimplePasscodeViewTest, KeepsTheDelegateForThePauseAndDoesWithoutOne) {
  makeRow();
  row->showKeyboard();
  type("123456");
  validator.reset();
  dropRow();
  device.time().runUntilIdle();
  EXPECT_THAT(typed, ElementsAre("123456"));
  makeRow();
  row->showKeyboard();
  EXPECT_TRUE(type("123456"));
  device.time().runUntilIdle();
  EXPECT_THAT(typed, SizeIs(1));
}

TEST_F(SNSimplePasscodeViewTest, TappedBoxPutsTheCaretBehindTheTypedDigits) {
  makeRow();
  row->showKeyboard();
  type("12");
  field()->setSelectedRange({0, 1});
  EXPECT_FALSE(box(4)->becomeFirstResponder());
  EXPECT_TRUE(field()->isFirstResponder());
  EXPECT_EQ(field()->selectedRange(), (NSRange{2, 0}));
}

// --- Clearing ----------------------------------------------------------------------------------

TEST_F(SNSimplePasscodeViewTest, ResetForgetsTheDigitsAndLeavesTheInputAlone) {
  makeRow();
  row->showKeyboard();
  type("12");
  row->hideKeyboard();
  row->reset();
  EXPECT_EQ(field()->text(), "");
  EXPECT_EQ(masks(), "------");
  device.time().runUntilIdle();
  EXPECT_EQ(focusedField(), nullptr);
}

TEST_F(SNSimplePasscodeViewTest, ClearingTakesTheInputBackAtOnceOrAfterAPause) {
  makeRow();
  row->_resetTextFields(/*delayed=*/false);
  EXPECT_EQ(focusedField(), field());
  row->hideKeyboard();
  row->_resetTextFields();
  advance(0.099);
  EXPECT_EQ(focusedField(), nullptr);
  advance(0.002);
  EXPECT_EQ(focusedField(), field());
  for (const auto& clear : clearings) {
    makeRow();
    clear(*row);
    const std::weak_ptr<UIView> weakRow = row;
    dropRow();
    EXPECT_TRUE(weakRow.expired()) << "nothing waits for a row that is gone";
    device.time().runUntilIdle();
  }
}

TEST_F(SNSimplePasscodeViewTest, DenialForgetsTheDigitsAndShakesEveryBoxOnce) {
  makeRow();
  row->showKeyboard();
  type("123456");
  row->_denyAccess();
  EXPECT_EQ(field()->text(), "");
  EXPECT_EQ(masks(), "------");
  EXPECT_EQ(focusedField(), field());
  for (const auto& each : row->digitTextFieldsArray()) {
    const auto& recorded = each->layer().animations();
    ASSERT_THAT(recorded, SizeIs(1));
    EXPECT_EQ(recorded[0].key, "shake");
    EXPECT_EQ(recorded[0].keyPath, "transform.translation.x");
    EXPECT_EQ(recorded[0].duration, Seconds(0.6));
    EXPECT_EQ(recorded[0].timing.curve, CATiming::Curve::linear);
    const std::vector<CAAnimation::Value> swing = {-12.0, 12.0, -12.0, 12.0, -6.0,
                                                   6.0,   -3.0, 3.0,   0.0};
    EXPECT_EQ(recorded[0].values, swing);
  }
}

TEST_F(SNSimplePasscodeViewTest, RowWithoutFieldsTakesEveryOperation) {
  row = SNSimplePasscodeView::initWithFrame({});
  row->reset();
  row->_denyAccess();
  row->showKeyboard();
  row->hideKeyboard();
  row->layoutIfNeeded();
  device.time().runUntilIdle();
  EXPECT_EQ(focusedField(), nullptr);
}

// --- The keyboard under the notification centre --------------------------------------------------

class BorrowedKeyboard : public SNSimplePasscodeViewTest {
 protected:
  BorrowedKeyboard() { openOn("9.3"); }

  /// A row on a system of `version`, with the notification centre over the screen.
  void openOn(const std::string& version) {
    dropRow();
    keyboard.reset();
    keyboardWindow.reset();
    bulletin.reset();
    restart(version);
    device.notificationCenter().setVisible(true);
    makeRow();
    makeKeyboard();
    bulletin = showInWindow(std::make_shared<UIView>(), bulletinClass());
  }

  static const UIClass& bulletinClass() {
    static const UIClass uiClass("SBBulletinWindow", &UIWindow::staticClass());
    return uiClass;
  }

  void makeKeyboard() {
    static const UIClass windowClass("UIRemoteKeyboardWindow", &UIWindow::staticClass());
    static const UIClass containerClass("UIInputSetContainerView", &UIView::staticClass());
    keyboard = std::make_shared<UIView>(CGRectMake(3, 12, 375, 216), containerClass);
    keyboardWindow = showInWindow(keyboard, windowClass);
  }

  std::shared_ptr<UIView> keyboard;
  std::shared_ptr<UIWindow> keyboardWindow;
  std::shared_ptr<UIWindow> bulletin;
};

TEST_F(BorrowedKeyboard, IsBorrowedOnGenerationNineUnderAVisibleNotificationCentreAlone) {
  for (const auto& [version, borrowed] : {std::pair("8.4", false),
                                          {"9.0", true},
                                          {"9.3.5", true},
                                          {"10.0", false},
                                          {"14.0", false}}) {
    openOn(version);
    row->showKeyboard();
    EXPECT_EQ(row->hackyKB() == keyboard, borrowed) << version;
    EXPECT_EQ(focusedField(), field()) << version;
  }
  openOn("9.3");
  device.notificationCenter().setVisible(false);
  row->showKeyboard();
  EXPECT_EQ(row->hackyKB(), nullptr);
  device.notificationCenter().setVisible(true);
  platform().notificationCenterController = nullptr;
  row->showKeyboard();
  EXPECT_EQ(row->hackyKB(), nullptr);
}

TEST_F(BorrowedKeyboard, ComesUpAfterTheDelayOfItsKind) {
  const struct {
    bool animated;
    bool delay;
    double seconds;
  } cases[] = {{true, true, 0.2}, {true, false, 0}, {false, true, 0.2}, {false, false, 0.01}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.seconds);
    openOn("9.3");
    row->showKeyboard(each.animated, each.delay);
    EXPECT_EQ(keyboard->superview(), bulletin);
    EXPECT_EQ(keyboard->alpha(), 0);
    if (each.seconds > 0) advance(each.seconds * 0.99);
    EXPECT_EQ(keyboard->alpha(), 0);
    advance(each.seconds * 0.02);
    EXPECT_EQ(keyboard->alpha(), 1);
    EXPECT_EQ(keyboard->frame(), CGRectMake(3, 451, 375, 216));
    const auto& recorded = keyboard->layer().animations();
    ASSERT_THAT(recorded, SizeIs(each.animated ? 1 : 0));
    if (!each.animated) continue;
    EXPECT_EQ(recorded[0].duration, Seconds(0.3));
    EXPECT_EQ(std::get<CGRect>(recorded[0].values.front()), CGRectMake(3, 667, 375, 216));
  }
}

TEST_F(BorrowedKeyboard, ComesUpAtOnceAndInPlaceWhenTheRowIsCleared) {
  for (const bool hasInput : {true, false})
    for (const auto& clear : clearings) {
      openOn("9.3");
      if (hasInput) field()->becomeFirstResponder();
      clear(*row);
      advance(hasInput || clear == clearings[2] ? 0 : 0.1);
      EXPECT_EQ(row->hackyKB(), keyboard);
      advance(0.0099);
      EXPECT_EQ(keyboard->alpha(), 0);
      advance(0.0002);
      EXPECT_EQ(keyboard->alpha(), 1);
      EXPECT_EQ(keyboard->frame().origin.y, 451);
      EXPECT_THAT(keyboard->layer().animations(), SizeIs(0));
    }
}

TEST_F(BorrowedKeyboard, IsBorrowedOnceUntilItIsGivenBack) {
  row->showKeyboard();
  device.time().runUntilIdle();
  row->showKeyboard();
  EXPECT_EQ(row->hackyKB(), keyboard);
  EXPECT_EQ(keyboard->alpha(), 1);
  row->hideKeyboard();
  keyboardWindow->addSubview(keyboard);  // as the system does when a field is edited again
  row->showKeyboard();
  device.time().runUntilIdle();
  EXPECT_EQ(keyboard->superview(), bulletin) << "hidden and shown in one turn";
}

TEST_F(BorrowedKeyboard, GoesWithTheInputAndWithTheSystemsKeyboard) {
  row->showKeyboard();
  row->hideKeyboard();
  EXPECT_EQ(row->hackyKB(), nullptr);
  EXPECT_EQ(keyboard->superview(), nullptr);
  EXPECT_EQ(focusedField(), nullptr);
  device.time().runUntilIdle();
  EXPECT_EQ(keyboard->alpha(), 0) << "the delayed block finds nothing to show";

  openOn("9.3");
  row->showKeyboard();
  field()->resignFirstResponder();
  EXPECT_EQ(row->hackyKB(), nullptr) << "in the same turn";
}

TEST_F(BorrowedKeyboard, MissingWindowsAreDoneWithout) {
  bulletin.reset();
  row->showKeyboard();
  EXPECT_EQ(row->hackyKB(), keyboard);
  EXPECT_EQ(keyboard->superview(), keyboardWindow);
  device.time().runUntilIdle();
  EXPECT_EQ(keyboard->alpha(), 1);

  openOn("9.3");
  keyboardWindow.reset();
  row->showKeyboard();
  EXPECT_EQ(row->hackyKB(), nullptr);
  EXPECT_EQ(focusedField(), field());
  device.time().runUntilIdle();
}

TEST_F(BorrowedKeyboard, RowThatIsGoneBeforeTheDelayLeavesTheKeyboardAlone) {
  row->showKeyboard();
  const std::weak_ptr<UIView> weakRow = row;
  dropRow();
  EXPECT_TRUE(weakRow.expired());
  device.time().runUntilIdle();
  EXPECT_EQ(keyboard->alpha(), 0);
}

}  // namespace
}  // namespace sentrel
