// The stack blur for every x86-64.

#if defined(__x86_64__)

#include <emmintrin.h>

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
  return Halves(_mm_mulhi_epu16(__m128i(a), __m128i(b)));
}

}  // namespace

PreparedBlur* prepareSse2(const Band& band, std::size_t radius) {
  return prepareBand(band, radius);
}

}  // namespace sentrel::stackblur

#endif
