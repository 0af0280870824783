#include "sentrel/effects/StackBlur.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "sentrel/effects/stackblur/Division.h"
#include "sentrel/effects/stackblur/Forms.h"
#include "tests/support/PlainStackBlur.h"

namespace sentrel {
namespace {

using Bytes = std::vector<std::uint8_t>;
using stackblur::Band;

/// Noise with a good share of the values that make the largest sums and slopes.
Bytes noise(std::size_t pixels) {
  static std::minstd_rand random(12);
  Bytes bytes(pixels * 4);
  for (std::uint8_t& byte : bytes) {
    const auto drawn = static_cast<std::uint32_t>(random()) >> 8;
    byte = static_cast<std::uint8_t>(drawn % 3 == 0 ? drawn / 3 : drawn % 3 == 1 ? 0 : 255);
  }
  return bytes;
}

TEST(StackBlurDivision, IsExactForEverySumThatThereIs) {
  using namespace stackblur;
  for (std::uint32_t radius = 1; radius <= largestRadiusOf16BitSlopes; ++radius) {
    const std::uint32_t weights = weightsOf(radius);
    const float factor = reciprocal(weights);
    const auto [multiplier, bias, shift] = multiplyHighDivision(weights);
    const bool isShort = radius <= largestRadiusOf16BitSums;
    EXPECT_TRUE(!isShort || 255 * weights + bias <= 0xFFFF) << "radius " << radius;
    std::uint32_t wrong = 0;
    for (std::uint32_t sum = 0; sum <= 255 * weights; ++sum) {
      const std::uint32_t quotient = sum / weights;
      wrong += static_cast<std::uint32_t>(static_cast<float>(sum) * factor) != quotient;
      wrong += isShort && (sum + bias) * multiplier >> 16 >> shift != quotient;
    }
    EXPECT_EQ(wrong, 0) << "radius " << radius;
  }
}

TEST(PlainStackBlur, GivesWhatIsWorkedOutByHand) {
  Bytes row(5 * 4);
  row[2 * 4] = 255;
  row[2 * 4 + 3] = 9;
  plainStackBlur(row.data(), 5, 1, 1);
  Bytes expected(5 * 4);
  expected[1 * 4] = expected[3 * 4] = 63;
  expected[2 * 4] = 127;
  expected[2 * 4 + 3] = 9;
  EXPECT_EQ(row, expected);
}

struct Size {
  std::uint32_t width, height;

  friend void PrintTo(const Size& size, std::ostream* out) {
    *out << size.width << "x" << size.height;
  }
};

class StackBlurSizes : public testing::TestWithParam<Size> {};

TEST_P(StackBlurSizes, EveryFormAndTwoThreadsGiveThePlainBytes) {
  const auto [width, height] = GetParam();
  const Bytes sharp = noise(width * height);
  for (const int radius :
       {1, 2, 3, 4, 5, 6, 7, 11, 13, 14, 15, 16, 17, 40, 50, 99, 126, 127, 300, 4094}) {
    Bytes plain = sharp;
    plainStackBlur(plain.data(), width, height, radius);
    for (const stackblur::Form& form : stackblur::forms()) {
      Bytes blurred = sharp;
      const Band picture{blurred.data(), width, height};
      std::unique_ptr<stackblur::PreparedBlur>(
          form.prepare(picture, static_cast<std::size_t>(radius)))
          ->run();
      ASSERT_TRUE(blurred == plain) << form.name << ", radius " << radius;
    }
    for (const StackBlurThreads threads : {StackBlurThreads::one, StackBlurThreads::two}) {
      Bytes blurred = sharp;
      sn__applyStackBlurToBuffer(blurred, width, height, radius, threads);
      ASSERT_TRUE(blurred == plain) << "radius " << radius;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, StackBlurSizes,
                         testing::Values(Size{1, 1}, Size{1, 90}, Size{90, 1}, Size{2, 3},
                                         Size{3, 2}, Size{4, 4}, Size{5, 17}, Size{8, 16},
                                         Size{9, 33}, Size{31, 8}, Size{40, 300}, Size{67, 45}));

TEST(StackBlur, LeavesAloneWhatItCannotBlur) {
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  constexpr std::uint32_t huge = std::numeric_limits<std::uint32_t>::max();
  const Bytes sharp = noise(6);
  const struct {
    std::uint32_t width, height;
    std::int64_t radius;
  } calls[] = {{3, 2, 0},
               {3, 2, -1},
               {3, 2, -most - 1},
               {3, 2, largestStackBlurRadius + 1},
               {3, 2, most},
               {0, 2, 1},
               {3, 0, 1},
               {3, 3, 1},
               {7, 1, 1},
               {huge, huge, 1},
               {1U << 31, 1U << 31, 1}};
  for (const auto& [width, height, radius] : calls) {
    Bytes buffer = sharp;
    sn__applyStackBlurToBuffer(buffer, width, height, radius);
    EXPECT_EQ(buffer, sharp) << width << " x " << height << ", radius " << radius;
  }
  sn__applyStackBlurToBuffer(nullptr, 3, 2, 1);
}

}  // namespace
}  // namespace sentrel
