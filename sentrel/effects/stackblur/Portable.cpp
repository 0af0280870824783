// The stack blur for any processor that the compiler knows, in registers of 16 bytes: many have
// them, and the compiler does without where they have not.

#include <cstddef>

namespace sentrel::stackblur {
namespace {
constexpr std::size_t registerBytes = 16;
}  // namespace
}  // namespace sentrel::stackblur

#include "sentrel/effects/stackblur/Kernel.h"

namespace sentrel::stackblur {
namespace {

inline Halves multiplyHigh(Halves a, Halves b) {
  const Words lower = (Words(a) & 0xFFFF) * (Words(b) & 0xFFFF) >> 16;
  const Words upper = (Words(a) >> 16) * (Words(b) >> 16) & 0xFFFF0000;
  return Halves(lower | upper);
}

}  // namespace

PreparedBlur* preparePortable(const Band& band, std::size_t radius) {
  return prepareBand(band, radius);
}

}  // namespace sentrel::stackblur
