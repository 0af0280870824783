#include "sentrel/uikit/LinearSystem.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace sentrel {
namespace {

/// Factors are of the order of 1, and sums are lengths on a screen.
constexpr double smallestFactor = 1e-9;
constexpr double tolerance = 1e-6;

double magnitude(const LinearSystem::Term& term) {
  return std::abs(term.factor);
}

bool areFinite(const std::vector<LinearSystem::Term>& terms) {
  return std::ranges::all_of(
      terms, [](const LinearSystem::Term& term) { return std::isfinite(term.factor); });
}

}  // namespace

LinearSystem::Outcome LinearSystem::add(const std::vector<Term>& terms, double sum) {
  if (!std::isfinite(sum) || !areFinite(terms)) return Outcome::conflicting;
  const auto newTerm = newTermOf(terms);
  for (const Term& term : terms)
    isNamed_[term.unknown] = true;
  if (newTerm) {
    define(terms, *newTerm, sum);
    return Outcome::fresh;
  }
  for (const Term& term : terms)
    shorten(term.unknown);
  Definition row = reduced(terms);
  const double rest = sum - row.constant;
  if (!std::isfinite(rest) || !areFinite(row.terms)) return Outcome::conflicting;
  if (row.terms.empty())
    return std::abs(rest) <= tolerance * std::max(1.0, std::abs(sum)) ? Outcome::repeated
                                                                      : Outcome::conflicting;
  const auto largest = std::ranges::max_element(row.terms, {}, magnitude);
  const auto pivot = static_cast<std::size_t>(largest - row.terms.begin());
  define(std::move(row.terms), pivot, rest);
  return Outcome::fresh;
}

std::optional<std::size_t> LinearSystem::newTermOf(const std::vector<Term>& terms) const {
  std::optional<std::size_t> best;
  double largest = 0;
  for (std::size_t i = 0; i < terms.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j)
      if (terms[j].unknown == terms[i].unknown) return std::nullopt;
    largest = std::max(largest, magnitude(terms[i]));
    if (isNamed_[terms[i].unknown]) continue;
    if (!best || magnitude(terms[i]) > magnitude(terms[*best])) best = i;
  }
  // As with the largest pivot, errors must not grow along a chain.
  if (best && (magnitude(terms[*best]) < largest || largest <= smallestFactor)) best.reset();
  return best;
}

void LinearSystem::define(std::vector<Term> terms, std::size_t pivot, double sum) {
  const Term solved = terms[pivot];
  terms.erase(terms.begin() + static_cast<std::ptrdiff_t>(pivot));
  for (Term& term : terms)
    term.factor /= -solved.factor;
  definitions_[solved.unknown] = {true, sum / solved.factor, std::move(terms)};
}

std::optional<double> LinearSystem::value(std::size_t unknown) {
  shorten(unknown);
  const Definition& definition = definitions_[unknown];
  if (!definition.defined || !definition.terms.empty() || !std::isfinite(definition.constant))
    return std::nullopt;
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
