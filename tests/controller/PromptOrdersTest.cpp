#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "tests/controller/PromptPhone.h"

namespace sentrel {
namespace {

// The compilers say differently that a sanitizer is at work, which takes many times as long.
#ifdef __has_feature
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define SENTREL_IS_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(SENTREL_IS_SANITIZED)
constexpr int ordersOfEachKind = 200;
#else
constexpr int ordersOfEachKind = 5'000;
#endif

/// After so many orders a phone is replaced: what it remembers grows.
constexpr int ordersOfOnePhone = 100;

/// A number from the environment repeats a run that failed.
std::uint64_t chooseSeed() {
  const char* given = std::getenv("SENTREL_SEED");
  return given ? std::strtoull(given, nullptr, 10) : std::random_device()();
}

class PromptOrders : public testing::TestWithParam<PromptPhoneKind> {};

/// Whatever happens in whatever order: no request ends twice or after it was replaced, none
/// succeeds without proof, sessions are those of successes, no prompt stays that nobody owns, and
/// the sensor is given back.
TEST_P(PromptOrders, NeverLeaveWhatMustNotBe) {
  const std::uint64_t seed = chooseSeed();
  // Before anything happens: a crash says nothing any more.
  std::printf("SENTREL_SEED=%llu\n", static_cast<unsigned long long>(seed));
  std::mt19937_64 random(seed);
  std::unique_ptr<PromptPhone> phone;
  for (int i = 0; i < ordersOfEachKind; ++i) {
    if (i % ordersOfOnePhone == 0) phone = std::make_unique<PromptPhone>(GetParam());
    const PromptOrder order = randomOrder(random, PromptPhone::places);
    const auto complaint = phone->live(order);
    if (!complaint) continue;
    const auto failsAlone = [](const PromptOrder& shorter) {
      return PromptPhone(GetParam()).live(shorter).has_value();
    };
    const bool isReproduced = failsAlone(order);
    const PromptOrder least = isReproduced ? shortest(order, failsAlone) : order;
    FAIL() << "SENTREL_SEED=" << seed << ", order " << i << ": "
           << PromptPhone(GetParam()).live(least).value_or(*complaint)
           << (isReproduced ? "\n" : " (not on a phone of its own)\n") << describe(least);
  }
}

INSTANTIATE_TEST_SUITE_P(Phones, PromptOrders,
                         testing::Values(PromptPhoneKind{"14.2", true, false, false},
                                         PromptPhoneKind{"14.2", false, false, false},
                                         PromptPhoneKind{"13.0", true, false, true},
                                         PromptPhoneKind{"12.4", true, false, false},
                                         PromptPhoneKind{"12.0", false, true, false},
                                         PromptPhoneKind{"11.0", true, true, false},
                                         PromptPhoneKind{"10.2", false, false, false},
                                         PromptPhoneKind{"9.1", false, true, false}),
                         [](const auto& kind) { return kind.param.name(); });

}  // namespace
}  // namespace sentrel
