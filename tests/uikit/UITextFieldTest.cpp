#include "sentrel/uikit/UITextField.h"

#include <limits>

#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/uikit/UIKitTest.h"

namespace sentrel {
namespace {

constexpr std::size_t farAway = std::numeric_limits<std::size_t>::max();

TEST(TextRanges, AreCutToTheTextAndToWholeCharacters) {
  const struct {
    std::string text;
    NSRange range;
    std::string replacement;
    std::string expected;
    NSRange inside;
  } cases[] = {{"1234", {1, 2}, "x", "1x4", {1, 2}},
               {"1234", {4, 0}, "5", "12345", {4, 0}},
               {"", {0, 0}, "1", "1", {0, 0}},
               {"1234", {2, 9}, "", "12", {2, 2}},
               {"1234", {9, 1}, "5", "12345", {4, 0}},
               {"1234", {1, farAway}, "", "1", {1, 3}},
               {"1234", {farAway, farAway}, "5", "12345", {4, 0}},
               {"a😀b", {1, 2}, "", "ab", {1, 2}},
               {"a😀b", {1, 1}, "", "ab", {1, 2}},
               {"a😀b", {2, 1}, "", "ab", {1, 2}},
               {"a😀b", {2, 0}, "x", "ax😀b", {1, 0}},
               {"éß€", {1, 1}, "s", "és€", {1, 1}},
               {"a\xFF\xC3z", {1, 1}, "", "a\xC3z", {1, 1}},
               {"\xED\xA0\x80", {0, 1}, "", "\xA0\x80", {0, 1}},
               {"\xF0\x9F\x98", {2, 1}, "", "\xF0\x9F", {2, 1}}};
  for (const auto& [text, range, replacement, expected, inside] : cases) {
    SCOPED_TRACE(text + ' ' + std::to_string(range.location) + ' ' + std::to_string(range.length));
    EXPECT_EQ(stringByReplacingCharactersInRange(text, range, replacement), expected);
    EXPECT_EQ(rangeInsideText(text, range), inside);
  }
}

TEST(Utf16Length, CountsCodeUnits) {
  for (const char* text : {"aé€", "a😀", "\xFF\xFE\xFF"})
    EXPECT_EQ(utf16Length(text), 3u) << text;
}

struct Delegate : UITextFieldDelegate {
  bool textFieldShouldBeginEditing(UITextField&) override { return mayBegin; }
  bool textFieldShouldEndEditing(UITextField&) override { return mayEnd; }
  bool textField(UITextField& field, NSRange range, const std::string& replacement) override {
    range_ = range;
    wouldBe = stringByReplacingCharactersInRange(field.text(), range, replacement);
    return mayChange;
  }

  bool mayBegin = true;
  bool mayEnd = true;
  bool mayChange = true;
  NSRange range_;
  std::string wouldBe;
};

class UITextFieldTest : public UIKitTest {
 protected:
  UITextFieldTest() {
    window_->setHidden(false);
    field_->setDelegate(delegate_);
    keyboardHides_ = process_->process().platform().localCenter->addObserver(
        std::string(UIKeyboardWillHideNotification), [this](const auto&) { ++hides_; });
  }

  int hides() {
    device_.time().runDue();
    return hides_;
  }

  std::shared_ptr<Delegate> delegate_ = std::make_shared<Delegate>();
  std::shared_ptr<UIWindow> window_ = std::make_shared<UIWindow>();
  std::shared_ptr<UITextField> field_ = addView<UITextField>(window_);
  std::shared_ptr<UITextField> other_ = addView<UITextField>(window_);
  Observation keyboardHides_;
  int hides_ = 0;
};

TEST_F(UITextFieldTest, OneFieldAtATimeHasTheInput) {
  EXPECT_TRUE(field_->becomeFirstResponder());
  EXPECT_TRUE(other_->becomeFirstResponder());
  EXPECT_FALSE(field_->isFirstResponder());
  EXPECT_EQ(hides(), 0) << "the keyboard stays for the other field";
  EXPECT_TRUE(other_->resignFirstResponder());
  EXPECT_TRUE(other_->resignFirstResponder());
  EXPECT_EQ(hides(), 1);
}

TEST_F(UITextFieldTest, TheDelegateMayRefuseBothBeginningAndEnding) {
  delegate_->mayBegin = false;
  EXPECT_FALSE(field_->becomeFirstResponder());
  delegate_->mayBegin = true;
  EXPECT_TRUE(field_->becomeFirstResponder());
  delegate_->mayEnd = false;
  EXPECT_FALSE(field_->resignFirstResponder());
  EXPECT_FALSE(other_->becomeFirstResponder());
  EXPECT_TRUE(field_->isFirstResponder());
  EXPECT_EQ(hides(), 0);
}

TEST_F(UITextFieldTest, AFieldThatGoesAwayGivesTheInputUp) {
  const auto root = addView(window_);
  const auto box = addView(root);
  box->addSubview(field_);
  delegate_->mayEnd = false;
  field_->becomeFirstResponder();
  EXPECT_FALSE(root->endEditing(/*force=*/false));
  box->removeFromSuperview();
  EXPECT_FALSE(field_->isFirstResponder());
  EXPECT_EQ(hides(), 1);
  other_->becomeFirstResponder();
  EXPECT_TRUE(root->endEditing(/*force=*/true));
  EXPECT_TRUE(other_->isFirstResponder()) << "it is not inside";
  window_.reset();
  EXPECT_FALSE(other_->isFirstResponder());
}

TEST_F(UITextFieldTest, OutsideEveryWindowThereIsNoInput) {
  const auto box = std::make_shared<UIView>();
  const auto field = addView<UITextField>(box);
  EXPECT_FALSE(field->becomeFirstResponder());
  other_->becomeFirstResponder();
  EXPECT_FALSE(field->becomeFirstResponder());
  EXPECT_TRUE(other_->isFirstResponder());
  window_->setHidden(true);
  window_->addSubview(box);
  EXPECT_TRUE(field->becomeFirstResponder()) << "a hidden window will do";
}

TEST_F(UITextFieldTest, OnlyAMoveWithinTheWindowKeepsTheInput) {
  const auto box = addView(window_);
  box->addSubview(field_);
  field_->becomeFirstResponder();
  addView(window_)->addSubview(box);
  EXPECT_TRUE(field_->isFirstResponder());
  const auto outside = std::make_shared<UIView>();
  const auto otherWindow = std::make_shared<UIWindow>();
  for (const auto& place : {outside, std::shared_ptr<UIView>(otherWindow)}) {
    window_->addSubview(box);
    field_->becomeFirstResponder();
    place->addSubview(box);
    EXPECT_FALSE(field_->isFirstResponder());
  }
  EXPECT_EQ(hides(), 2);
}

TEST_F(UITextFieldTest, TypingGoesToTheCaretThroughTheDelegate) {
  EXPECT_FALSE(field_->insertText("1")) << "nobody types into a field that has not the input";
  field_->becomeFirstResponder();
  field_->setText("12");
  field_->setSelectedRange({1, 0});
  EXPECT_TRUE(field_->insertText("😀"));
  EXPECT_EQ(field_->text(), "1😀2");
  EXPECT_EQ(field_->selectedRange(), (NSRange{3, 0}));
  EXPECT_TRUE(field_->deleteBackward());
  EXPECT_EQ(delegate_->range_, (NSRange{1, 2}));
  EXPECT_EQ(field_->text(), "12");
  field_->setSelectedRange({0, 2});
  EXPECT_TRUE(field_->deleteBackward());
  EXPECT_EQ(field_->text(), "");
  EXPECT_FALSE(field_->deleteBackward());
}

TEST_F(UITextFieldTest, ARefusedEditChangesNothing) {
  field_->becomeFirstResponder();
  field_->setText("123456");
  delegate_->mayChange = false;
  EXPECT_FALSE(field_->replace({99, 99}, "7"));
  EXPECT_EQ(delegate_->wouldBe, "1234567");
  EXPECT_EQ(delegate_->range_, (NSRange{6, 0})) << "the delegate sees a range of the text";
  EXPECT_EQ(field_->text(), "123456");
}

TEST_F(UITextFieldTest, SecureTextIsABulletACharacter) {
  field_->setText("a😀");
  EXPECT_EQ(field_->displayedText(), "a😀");
  field_->setSecureTextEntry(true);
  EXPECT_EQ(field_->displayedText(), "••");
}

/// Says which texts it could have kept.
class KeepingTexts final : public TextMeasuring {
 public:
  CGSize sizeOfText(std::string_view text, const Font&, double) const override {
    kept += std::string(text) + ".";
    return {10, 10};
  }
  CGSize sizeOfSecretText(std::string_view, const Font&, double) const override { return {20, 10}; }

  mutable std::string kept;
};

TEST_F(UITextFieldTest, WhatIsTypedIsMeasuredButNotKept) {
  const auto measuring = std::make_shared<KeepingTexts>();
  process_->process().platform().textMeasuring = measuring;
  const auto width = [this] { return field_->intrinsicContentSize(100)->width; };
  field_->setText("none");
  EXPECT_EQ(width(), 10);
  field_->setText("");
  field_->becomeFirstResponder();
  for (const char* digit : {"4", "7"}) {
    field_->insertText(digit);
    EXPECT_EQ(width(), 20);
  }
  field_->deleteBackward();
  EXPECT_EQ(field_->text(), "4");
  EXPECT_EQ(width(), 20);
  EXPECT_EQ(measuring->kept.find_first_of("47"), std::string::npos) << measuring->kept;
  field_->setText("none");
  EXPECT_EQ(width(), 10);
}

}  // namespace
}  // namespace sentrel
