#pragma once

#include <bit>
#include <cstdint>

namespace sentrel::stackblur {

// Divisions by the sum of the weights that are no divisions. Both are exact for every sum that can
// occur, 0 to 255 × weights; the tests try them all.

inline constexpr std::uint32_t largestRadiusOf16BitSums = 15;
inline constexpr std::uint32_t largestRadiusOf16BitSlopes = 126;

/// (radius + 1)².
constexpr std::uint32_t weightsOf(std::uint32_t radius) {
  return (radius + 1) * (radius + 1);
}

/// sum / weights = (sum + bias) × factor >> 16 >> shift, where nothing but the product takes more
/// than 16 bits: for weights from 4 to 256.
struct MultiplyHighDivision {
  std::uint16_t factor;
  std::uint16_t bias;
  std::uint16_t shift;
};

/// The factor is 2^(16 + shift) / weights, as large as fits and rounded to nearest. Rounded up it
/// gives quotients that are a little too large, by too little to reach the next one. Rounded down
/// it would fall short of the whole quotients; one more on the sum makes up for it.
constexpr MultiplyHighDivision multiplyHighDivision(std::uint32_t weights) {
  const auto shift = static_cast<std::uint32_t>(std::bit_width(weights - 1) - 1);
  const std::uint32_t power = 1U << (16 + shift);
  const std::uint32_t factor = (power + weights / 2) / weights;
  const bool isRoundedDown = factor * weights < power;
  return {static_cast<std::uint16_t>(factor), static_cast<std::uint16_t>(isRoundedDown ? 1 : 0),
          static_cast<std::uint16_t>(shift)};
}

/// sum / weights = sum × reciprocal, cut off: the float above the nearest one, for weights up to
/// 127². Every sum is a float then.
constexpr float reciprocal(std::uint32_t weights) {
  return std::bit_cast<float>(std::bit_cast<std::uint32_t>(1.0F / static_cast<float>(weights)) + 1);
}

}  // namespace sentrel::stackblur
