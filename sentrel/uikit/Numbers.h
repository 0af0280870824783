#pragma once

#include <cmath>
#include <cstdio>
#include <string>

namespace sentrel {

/// A number for people: at most three decimals, none that say nothing.
inline std::string describeNumber(double number) {
  char buffer[40];
  const double rounded = std::round(number * 1000) / 1000;
  std::snprintf(buffer, sizeof buffer, "%.10g", rounded == 0 ? 0 : rounded);
  return buffer;
}

}  // namespace sentrel
