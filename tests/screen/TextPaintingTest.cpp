#include <string>

#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/screen/ScreenTest.h"

namespace sentrel::screen {
namespace {

class LabelPainting : public ScreenTest {
 protected:
  static std::shared_ptr<UILabel> makeLabel(const std::string& text, const CGRect& frame) {
    auto label = std::make_shared<UILabel>(frame);
    label->setText(text);
    label->setFont(UIFont::systemFontOfSize(16));
    label->setNumberOfLines(0);
    return label;
  }

  Ink ink(const UIView& view) { return inkOf(paint(view)).value_or(Ink{0, 0, 0, 0}); }
};

TEST_F(LabelPainting, TextStandsInTheMiddleOfTheHeightOnTheSideItIsAligned) {
  const auto label = makeLabel("nnn", CGRectMake(0, 20, 100, 60));
  EXPECT_NEAR(ink(*label).midY(), 52, 3);
  EXPECT_LT(ink(*label).left, 4);
  label->setTextAlignment(NSTextAlignment::center);
  EXPECT_NEAR(ink(*label).midX(), 50, 1);
  label->setTextAlignment(NSTextAlignment::right);
  EXPECT_GT(ink(*label).right, 96);
}

TEST_F(LabelPainting, SidesMeanTheSameForTextsFromRightToLeft) {
  const auto label = makeLabel("שלום", CGRectMake(0, 20, 100, 60));
  EXPECT_LT(ink(*label).left, 4);
  label->setTextAlignment(NSTextAlignment::right);
  EXPECT_GT(ink(*label).right, 96);
}

TEST_F(LabelPainting, LongTextWrapsAndMoreLinesThanAllowedAreCut) {
  const auto label = makeLabel("nnn nnn nnn nnn nnn nnn nnn", CGRectMake(0, 0, 100, 100));
  const int all = ink(*label).height();
  label->setNumberOfLines(2);
  const int two = ink(*label).height();
  label->setNumberOfLines(1);
  const int one = ink(*label).height();
  EXPECT_GT(two, one + 10);
  EXPECT_GT(all, two + 10);
  EXPECT_LE(ink(*label).right, 100);
}

TEST_F(LabelPainting, LinesThatDoNotFitTheHeightAreCut) {
  const auto label = makeLabel("nnn nnn nnn nnn nnn nnn nnn", CGRectMake(0, 0, 100, 45));
  EXPECT_LE(ink(*label).height(), 45);
  label->setLineBreakMode(NSLineBreakMode::byWordWrapping);
  EXPECT_LE(ink(*label).height(), 45);
}

TEST_F(LabelPainting, OnlyTruncationShowsDotsAfterWhatFits) {
  const auto label = makeLabel("nnnnnnnn nnnnnnnn nnnnnnnn", CGRectMake(0, 0, 100, 25));
  label->setNumberOfLines(1);
  const auto whole = makeLabel("nnnnnnnn", CGRectMake(0, 0, 100, 25));
  EXPECT_GT(ink(*label).right, ink(*whole).right);
  label->setLineBreakMode(NSLineBreakMode::byWordWrapping);
  EXPECT_EQ(ink(*label).right, ink(*whole).right);
}

TEST_F(LabelPainting, TextShrinksToFitDownToTheLabelsLimit) {
  const auto label = makeLabel("nnnnnnnnnnnnnn", CGRectMake(0, 0, 90, 100));
  label->setNumberOfLines(1);
  const int letterHeight = ink(*label).height();
  label->setAdjustsFontSizeToFitWidth(true);
  EXPECT_LT(ink(*label).height(), letterHeight);
  const int fitted = ink(*label).width();
  EXPECT_GT(fitted, 80);
  EXPECT_LE(fitted, 90);
  label->setMinimumScaleFactor(0.95);
  EXPECT_GT(ink(*label).height(), letterHeight * 0.9) << "shrunk beyond its limit";
}

TEST_F(LabelPainting, TextThatFitsAtNoSizeEndsInDotsAndStaysReadable) {
  const auto label = makeLabel("nnn\nnnn\nnnn", CGRectMake(0, 0, 90, 100));
  label->setAdjustsFontSizeToFitWidth(true);
  const auto shown = makeLabel("nnn\nnnn\u2026", label->frame());
  label->setNumberOfLines(2);
  EXPECT_EQ(differingPixels(paint(*label), paint(*shown)), 0) << "line ends do not shrink it";
  label->setNumberOfLines(0);
  label->setAdjustsFontSizeToFitWidth(false);
  for (const auto& view : {label, shown})
    view->setFrame(CGRectMake(0, 0, 90, 45));
  EXPECT_EQ(differingPixels(paint(*label), paint(*shown)), 0) << "nor does the height hide them";
  label->setText(std::string(200, 'n'));
  label->setNumberOfLines(1);
  label->setAdjustsFontSizeToFitWidth(true);
  const auto readable = makeLabel(label->text(), label->frame());
  readable->setNumberOfLines(1);
  readable->setFont(UIFont::systemFontOfSize(10));
  EXPECT_EQ(differingPixels(paint(*label), paint(*readable)), 0);
}

TEST_F(LabelPainting, MarksSitOnTheLettersThatTheyBelongTo) {
  for (const bool isBold : {false, true})
    for (const std::string letter : {"l", "Z", "x"}) {
      const auto label = makeLabel(letter + "\u030A", CGRectMake(0, 0, 100, 100));
      label->setFont(isBold ? UIFont::boldSystemFontOfSize(60) : UIFont::systemFontOfSize(60));
      const Ink all = ink(*label);
      // What is seen of the upper half of the mark alone, and of the lower half of the letter.
      const auto part = [&](double top, double bottom) {
        auto window = std::make_shared<UIView>(CGRectMake(0, top, 100, bottom - top));
        window->setBounds(CGRectMake(0, top, 100, bottom - top));
        window->setClipsToBounds(true);
        window->addSubview(label);
        return ink(*window);
      };
      const Ink mark = part(0, all.top + 6);
      const Ink body = part(all.bottom - 6, 100);
      EXPECT_NEAR(mark.midX(), body.midX(), 2.5) << letter << isBold;
    }
}

TEST_F(LabelPainting, TwoLinesShrinkBeforeAWordIsBroken) {
  const auto label = makeLabel("nnnn nnnnnnnnnnnnnn", CGRectMake(0, 0, 90, 100));
  label->setNumberOfLines(2);
  label->setFont(UIFont::systemFontOfSize(24));
  label->setAdjustsFontSizeToFitWidth(true);
  label->setMinimumScaleFactor(0.2);
  const auto alone = makeLabel("nnnnnnnnnnnnnn", CGRectMake(0, 0, 90, 100));
  alone->setNumberOfLines(1);
  alone->setFont(label->font());
  alone->setAdjustsFontSizeToFitWidth(true);
  EXPECT_NEAR(ink(*label).width(), ink(*alone).width(), 2);
}

TEST_F(LabelPainting, TextsOfAnyKindAndLengthAreBorne) {
  std::string marks = "a";
  for (int i = 0; i < 10'000; ++i)
    marks += "\u0301";
  for (const std::string& text :
       {std::string(10'000, 'm'), std::string(10'000, '\n'), marks, std::string("\xFF\xFE\x80"),
        std::string(1, '\0'), std::string("\u202Eabc\u202C\u0600")}) {
    const auto label = makeLabel(text, CGRectMake(0, 0, 100, 100));
    label->setAdjustsFontSizeToFitWidth(true);
    for (const int lines : {0, 1, 2}) {
      label->setNumberOfLines(lines);
      paint(*label);
    }
  }
  EXPECT_TRUE(inkOf(paint(*makeLabel("\xFF", CGRectMake(0, 0, 100, 100)))));
}

class TextFieldPainting : public ScreenTest {
 protected:
  static std::shared_ptr<UITextField> makeField(const std::string& text, bool secure) {
    auto field = std::make_shared<UITextField>(CGRectMake(0, 20, 100, 40));
    field->setText(text);
    field->setSecureTextEntry(secure);
    return field;
  }
};

TEST_F(TextFieldPainting, ASecureFieldGivesAwayNothingButTheLength) {
  const Canvas digits = paint(*makeField("1234", /*secure=*/true));
  EXPECT_TRUE(inkOf(digits));
  EXPECT_EQ(differingPixels(digits, paint(*makeField("9806", /*secure=*/true))), 0);
  EXPECT_NE(differingPixels(digits, paint(*makeField("123", /*secure=*/true))), 0);
  EXPECT_NE(differingPixels(digits, paint(*makeField("1234", /*secure=*/false))), 0);
}

TEST_F(TextFieldPainting, TheCaretStandsWhereTheNextCharacterGoesUnlessItIsClear) {
  const auto field = makeField("nnn", /*secure=*/false);
  const auto window = std::make_shared<UIWindow>();
  window->addSubview(field);
  const int end = inkOf(paint(*field))->right;
  field->becomeFirstResponder();
  EXPECT_GT(inkOf(paint(*field))->right, end);
  field->setTintColor(UIColor::clearColor());
  EXPECT_EQ(inkOf(paint(*field))->right, end);
}

}  // namespace
}  // namespace sentrel::screen
