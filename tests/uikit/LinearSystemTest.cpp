#include "sentrel/uikit/LinearSystem.h"

#include <gtest/gtest.h>

#include <limits>

namespace sentrel {
namespace {

using Outcome = LinearSystem::Outcome;

TEST(LinearSystem, TellsWhatIsFreshRepeatedAndConflicting) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const struct {
    std::vector<LinearSystem::Term> terms;
    double sum;
    Outcome outcome;
  } equations[] = {
      {{{0, 1}, {1, 1}}, 10, Outcome::fresh},
      {{{0, 2}, {1, 2}}, 20, Outcome::repeated},
      {{{0, 1}, {1, 1}}, 11, Outcome::conflicting},
      {{{1, 1}, {2, -1}}, 0, Outcome::fresh},
      {{{0, 1}, {2, 1}}, 10, Outcome::repeated},
      {{}, 0, Outcome::repeated},
      {{}, 1, Outcome::conflicting},
      {{{3, 1}, {3, -1}}, 0, Outcome::repeated},
      {{{3, 1}}, infinity, Outcome::conflicting},
      {{{3, infinity}}, 1, Outcome::conflicting},
      {{{2, 1}}, 4, Outcome::fresh},
      {{{0, 1}}, 6, Outcome::repeated},
      {{{0, 1}, {1, -1}}, 3, Outcome::conflicting},
  };
  LinearSystem system(4);
  int number = 0;
  for (const auto& [terms, sum, outcome] : equations)
    EXPECT_EQ(system.add(terms, sum), outcome) << "equation " << number++;
  EXPECT_EQ(system.value(0), 6);
  EXPECT_EQ(system.value(1), 4);
  EXPECT_EQ(system.value(2), 4);
  EXPECT_EQ(system.value(3), std::nullopt);
}

TEST(LinearSystem, AnUnknownIsDeterminedOnlyWhenNothingFreeIsLeft) {
  LinearSystem system(3);
  system.add({{0, 1}, {1, -1}}, 5);
  EXPECT_EQ(system.value(0), std::nullopt);
  system.add({{1, 1}, {2, -3}}, 0);
  EXPECT_EQ(system.value(0), std::nullopt);
  system.add({{2, 1}}, 2);
  EXPECT_EQ(system.value(0), 11);
}

}  // namespace
}  // namespace sentrel
