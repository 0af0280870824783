#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

#include "tests/screen/ScreenTest.h"

namespace sentrel::screen {
namespace {

constexpr double unlimited = std::numeric_limits<double>::infinity();
const Font system17{.size = 17};

class TextMeasuring : public ScreenTest {
 protected:
  CGSize measure(std::string_view text, const Font& font = system17, double width = unlimited) {
    return measuring_.sizeOfText(text, font, width);
  }

  PangoTextMeasuring measuring_{fonts()};
};

TEST_F(TextMeasuring, TextThatIsTooWideTakesMoreLinesWithinTheWidth) {
  const CGSize line = measure("Scan your fingerprint to continue");
  const CGSize wrapped = measure("Scan your fingerprint to continue", system17, line.width * 0.75);
  EXPECT_DOUBLE_EQ(wrapped.height, 2 * line.height);
  EXPECT_LE(wrapped.width, line.width * 0.75);
}

TEST_F(TextMeasuring, AWordWiderThanALineIsBroken) {
  const CGSize word = measure("Überweisungsbestätigung");
  const CGSize broken = measure("Überweisungsbestätigung", system17, word.width / 2.5);
  EXPECT_DOUBLE_EQ(broken.height, 3 * word.height);
  EXPECT_LE(broken.width, word.width / 2.5);
}

TEST_F(TextMeasuring, TheWidthThatWasMeasuredIsEnough) {
  for (const double size : {11.0, 14.0, 17.0, 49.5}) {
    const Font font{.size = size};
    const CGSize line = measure("Look at the screen", font);
    EXPECT_EQ(measure("Look at the screen", font, line.width), line) << size;
  }
}

/// Whatever was measured before, at whatever other widths.
TEST_F(TextMeasuring, ARememberedSizeIsTheOneThatWouldBeMeasured) {
  const std::string texts[] = {"",
                               "Letters",
                               "Scan your fingerprint to continue",
                               "trailing spaces   ",
                               "two\nlines of text",
                               "Überweisungsbestätigung",
                               "سجل الدخول باستخدام بصمة الإصبع"};
  const double widths[] = {0, 1, 7.5, 40, 80.25, 120, 187.5, 216, 240.75, 300, unlimited};
  for (const std::string& text : texts)
    for (const double first : widths)
      for (const double second : widths) {
        const PangoTextMeasuring fresh(fonts());
        const PangoTextMeasuring asked(fonts());
        const CGSize firstSize = asked.sizeOfText(text, system17, first);
        EXPECT_EQ(asked.sizeOfText(text, system17, second),
                  fresh.sizeOfText(text, system17, second))
            << text << " at " << first << " and then at " << second;
        EXPECT_EQ(asked.sizeOfText(text, system17, first), firstSize);
        EXPECT_EQ(asked.sizeOfText(text, system17, firstSize.width),
                  fresh.sizeOfText(text, system17, firstSize.width))
            << text << " at the width it took at " << first;
      }
}

TEST_F(TextMeasuring, MoreTextsThanAreRememberedAreMeasuredAllTheSame) {
  std::vector<CGSize> sizes;
  const auto text = [](std::size_t i) { return std::to_string(i * i * i); };
  for (std::size_t i = 0; i < 3 * RememberedSizes::mostAtATime; ++i) {
    measure("kept in use");
    sizes.push_back(measure(text(i)));
  }
  for (std::size_t i = 0; i < sizes.size(); ++i)
    EXPECT_EQ(measure(text(i)), sizes[i]) << i;
}

TEST_F(TextMeasuring, NoTextFillsOneEmptyLine) {
  EXPECT_EQ(measure("").width, 0);
  EXPECT_EQ(measure("").height, measure("A").height);
}

TEST_F(TextMeasuring, WeightAndSizeCountAndTheNameDoesNot) {
  const CGSize plain = measure("Passcode");
  EXPECT_GT(measure("Passcode", {.size = 17, .bold = true}).width, plain.width);
  EXPECT_NEAR(measure("Passcode", {.size = 34}).height, 2 * plain.height, 0.01);
  EXPECT_EQ(measure("Passcode", {.name = "AvenirNext-Regular", .size = 17}), plain);
  EXPECT_EQ(measure("Passcode", {.name = "Bold Serif 90", .size = 17}), plain);
}

TEST_F(TextMeasuring, WhatIsNoTextIsMeasuredAsItsReplacementAndACombiningMarkAddsNoWidth) {
  EXPECT_EQ(measure("a\xFF\xC3z"), measure("a\uFFFD\uFFFDz"));
  EXPECT_EQ(measure(std::string_view("a\0z", 3)), measure("a\uFFFDz"));
  EXPECT_NEAR(measure("a\u0308o\u0308u\u0308").width, measure("äöü").width, 0.01);
}

TEST_F(TextMeasuring, EveryScriptOfALocalisedTextHasItsOwnGlyphs) {
  // A script without glyphs would show as boxes, all equally wide.
  for (const auto& [wide, narrow] :
       {std::pair("ש", "ו"), std::pair("ص", "ا"), std::pair("щ", "г"), std::pair("ω", "ι")})
    EXPECT_GT(measure(wide).width, measure(narrow).width) << wide;
}

TEST_F(TextMeasuring, LongTextsOfAnyKindAreMeasuredWithoutTrouble) {
  std::string marks = "a";
  for (int i = 0; i < 10'000; ++i)
    marks += "\u0301";
  EXPECT_GT(measure(std::string(10'000, 'x'), system17, 300).height, 1000);
  EXPECT_GT(measure(std::string(10'000, '\n'), system17, 300).height, 100'000);
  EXPECT_GT(measure(marks, system17, 300).height, 0);
}

TEST_F(TextMeasuring, TheTimeGrowsWithTheLengthOfAWordAndNoFaster) {
  const auto processorTime = [this](std::size_t length) {
    std::clock_t least = std::numeric_limits<std::clock_t>::max();
    for (int i = 0; i < 3; ++i) {
      const std::clock_t start = std::clock();
      measure(std::string(length, 'x'), system17, 100);
      least = std::min(least, std::clock() - start);
    }
    return static_cast<double>(least);
  };
  EXPECT_LT(processorTime(16'000), 8 * processorTime(4'000));
}

TEST_F(TextMeasuring, SizesAndWidthsWithoutMeaningAreBorne) {
  const double noNumber = std::numeric_limits<double>::quiet_NaN();
  for (const double size : {0.0, -5.0, 1e9, unlimited, noNumber})
    EXPECT_TRUE(std::isfinite(measure("A", {.size = size}).height)) << size;
  for (const double width : {0.0, -5.0, 1e300, noNumber})
    EXPECT_TRUE(std::isfinite(measure("A B", system17, width).height)) << width;
}

TEST(PinnedFonts, AMissingFontSaysWhatToInstall) {
  using testing::HasSubstr;
  EXPECT_THAT(
      [] {
        PinnedFonts({"/nowhere", "/nowhere"});
      },
      testing::ThrowsMessage<std::runtime_error>(
          testing::AllOf(HasSubstr("fonts-inter"), HasSubstr("/nowhere/"))));
}

}  // namespace
}  // namespace sentrel::screen
