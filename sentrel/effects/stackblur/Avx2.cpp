// The stack blur for x86-64 with AVX2. Only what stands between the pragmas is compiled for it, and
// none of what the headers above them bring along.

#if defined(__x86_64__)

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "sentrel/effects/stackblur/Division.h"
#include "sentrel/effects/stackblur/Forms.h"

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif

namespace sentrel::stackblur {
namespace {
constexpr std::size_t registerBytes = 32;
}  // namespace
}  // namespace sentrel::stackblur

#include "sentrel/effects/stackblur/Kernel.h"

namespace sentrel::stackblur {
namespace {

inline Halves multiplyHigh(Halves a, Halves b) {
  return Halves(_mm256_mulhi_epu16(__m256i(a), __m256i(b)));
}

}  // namespace

PreparedBlur* prepareAvx2(const Band& band, std::size_t radius) {
  return prepareBand(band, radius);
}

}  // namespace sentrel::stackblur

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif

#endif
