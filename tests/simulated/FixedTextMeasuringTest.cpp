#include "device/simulated/FixedTextMeasuring.h"

#include <gtest/gtest.h>

#include <limits>

namespace sentrel::simulated {
namespace {

constexpr double unlimited = std::numeric_limits<double>::infinity();

struct TextCase {
  const char* text;
  double maxWidth;
  double characters;
  double lines;
};

TEST(FixedTextMeasuring, WrapsBetweenWordsAndInsideLongOnes) {
  const TextCase cases[] = {
      {"", unlimited, 0, 1},
      {"abc", unlimited, 3, 1},
      {"ab cd", 25, 5, 1},
      {"ab cd", 20, 2, 2},
      {"abcdefgh", 15, 3, 3},
      {"a bcdefgh", 15, 3, 4},
      {"ab\ncd", unlimited, 2, 2},
      {"ab\n", unlimited, 2, 2},
      {"äöü€😀", unlimited, 5, 1},
      {"abc", 0, 1, 3},
      {"one two three four", 50, 10, 2},
  };
  for (const auto& [text, maxWidth, characters, lines] : cases) {
    const CGSize size = FixedTextMeasuring().sizeOfText(text, Font{"", 10}, maxWidth);
    EXPECT_DOUBLE_EQ(size.width, characters * 5) << text;
    EXPECT_DOUBLE_EQ(size.height, lines * 12) << text;
  }
}

}  // namespace
}  // namespace sentrel::simulated
