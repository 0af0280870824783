#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// Linear equations over numbered unknowns, taken one at a time and solved as they come.
///
/// Gaussian elimination over sparse rows: each equation that says something new defines one unknown
/// by the others. One that names an unknown for the first time defines it as it stands, and
/// definitions are shortened only when they are looked at. Chains of views that hang on one another
/// therefore cost their length, not its square.
class SENTREL_API LinearSystem {
 public:
  struct Term {
    std::size_t unknown;
    double factor;
  };

  enum class Outcome {
    fresh,       ///< Says something new.
    repeated,    ///< Follows from what was said before.
    conflicting  ///< Contradicts what was said before, and does not count.
  };

  explicit LinearSystem(std::size_t unknowns)
      : definitions_(unknowns), isNamed_(unknowns, false), factors_(unknowns, 0.0) {}

  /// The sum of the terms is `sum`. An equation that is not finite is conflicting.
  Outcome add(const std::vector<Term>& terms, double sum);

  /// None while the unknown is not determined, and where its value is beyond all numbers.
  std::optional<double> value(std::size_t unknown);

 private:
  /// unknown = constant + the terms.
  struct Definition {
    bool defined = false;
    double constant = 0;
    std::vector<Term> terms;
  };

  /// Which of the terms, none of which is like another, names an unknown that no equation named
  /// before and that it can well be solved for.
  std::optional<std::size_t> newTermOf(const std::vector<Term>& terms) const;
  void define(std::vector<Term> terms, std::size_t pivot, double sum);

  /// Rewrites the unknown's definition, if it has one, so that it names free unknowns only.
  void shorten(std::size_t unknown);
  bool isShort(std::size_t unknown) const;
  std::optional<std::size_t> longTermOf(std::size_t unknown) const;

  /// `terms` with what defines them in their place, where all their definitions are short.
  Definition reduced(const std::vector<Term>& terms);
  void addFactor(std::size_t unknown, double factor);

  std::vector<Definition> definitions_;
  std::vector<bool> isNamed_;

  /// Where `reduced` adds up: a factor for every unknown, and which of them were touched.
  std::vector<double> factors_;
  std::vector<std::size_t> touched_;
};

}  // namespace sentrel
