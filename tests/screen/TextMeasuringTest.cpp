#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <string>

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

TEST_F(TextMeasuring, WhatIsNoTextIsMeasuredAsItsReplacement) {
  EXPECT_EQ(measure("a\xFF\xC3z"), measure("a\uFFFD\uFFFDz"));
  EXPECT_EQ(measure(std::string_view("a\0z", 3)), measure("a\uFFFDz"));
}

TEST_F(TextMeasuring, ACombiningMarkAddsNoWidth) {
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
  try {
    const PinnedFonts fonts({"/nowhere", "/nowhere"});
    FAIL() << "loaded fonts from nowhere";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("fonts-inter"), std::string::npos) << error.what();
    EXPECT_NE(std::string(error.what()).find("/nowhere/"), std::string::npos) << error.what();
  }
}

}  // namespace
}  // namespace sentrel::screen
