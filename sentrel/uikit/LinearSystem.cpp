#include "sentrel/uikit/LinearSystem.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace sentrel {
namespace {

/// Factors are of the order of 1, and sums are lengths on a screen.
constexpr double smallestFactor = 1e-9;
constexpr double tolerance = 1e-6;

}  // namespace

LinearSystem::Outcome LinearSystem::add(const std::vector<Term>& terms, double sum) {
  for (const Term& term : terms)
    shorten(term.unknown);
  Definition row = reduced(terms);
  const double rest = sum - row.constant;
  const bool isFinite = std::isfinite(rest) && std::ranges::all_of(row.terms, [](const Term& term) {
                          return std::isfinite(term.factor);
                        });
  if (!isFinite) return Outcome::conflicting;
  if (row.terms.empty())
    return std::abs(rest) <= tolerance * std::max(1.0, std::abs(sum)) ? Outcome::repeated
                                                                      : Outcome::conflicting;
  const Term pivot = *std::ranges::max_element(
      row.terms, {}, [](const Term& term) { return std::abs(term.factor); });
  std::erase_if(row.terms, [&](const Term& term) { return term.unknown == pivot.unknown; });
  for (Term& term : row.terms)
    term.factor /= -pivot.factor;
  definitions_[pivot.unknown] = {true, rest / pivot.factor, std::move(row.terms)};
  return Outcome::fresh;
}

std::optional<double> LinearSystem::value(std::size_t unknown) {
  shorten(unknown);
  const Definition& definition = definitions_[unknown];
  if (!definition.defined || !definition.terms.empty()) return std::nullopt;
  return definition.constant;
}

/// Works through what the definition hangs on from the far end, without recursion: chains may be as
/// long as there are views.
void LinearSystem::shorten(std::size_t unknown) {
  if (isShort(unknown)) return;
  std::vector<std::size_t> pending{unknown};
  while (!pending.empty()) {
    const std::size_t each = pending.back();
    if (isShort(each)) {
      pending.pop_back();
    } else if (const auto longer = longTermOf(each)) {
      pending.push_back(*longer);
    } else {
      Definition& definition = definitions_[each];
      Definition shorter = reduced(definition.terms);
      definition.constant += shorter.constant;
      definition.terms = std::move(shorter.terms);
    }
  }
}

bool LinearSystem::isShort(std::size_t unknown) const {
  return std::ranges::none_of(definitions_[unknown].terms, [this](const Term& term) {
    return definitions_[term.unknown].defined;
  });
}

std::optional<std::size_t> LinearSystem::longTermOf(std::size_t unknown) const {
  for (const Term& term : definitions_[unknown].terms)
    if (!isShort(term.unknown)) return term.unknown;
  return std::nullopt;
}

LinearSystem::Definition LinearSystem::reduced(const std::vector<Term>& terms) {
  Definition sum;
  for (const Term& term : terms) {
    const Definition& definition = definitions_[term.unknown];
    if (!definition.defined) addFactor(term.unknown, term.factor);
    sum.constant += term.factor * definition.constant;
    for (const Term& inner : definition.terms)
      addFactor(inner.unknown, term.factor * inner.factor);
  }
  for (const std::size_t unknown : touched_)
    if (const double factor = std::exchange(factors_[unknown], 0.0);
        !(std::abs(factor) <= smallestFactor))
      sum.terms.push_back({unknown, factor});
  touched_.clear();
  return sum;
}

void LinearSystem::addFactor(std::size_t unknown, double factor) {
  if (factors_[unknown] == 0) touched_.push_back(unknown);
  factors_[unknown] += factor;
}

}  // namespace sentrel
