#include "programs/sim/Row.h"

#include <charconv>
#include <cmath>

namespace sentrel::sim {
namespace {

template <class Number>
bool read(const std::string& word, Number& number) {
  const char* end = word.data() + word.size();
  const auto result = std::from_chars(word.data(), end, number);
  return result.ec == std::errc() && result.ptr == end;
}

}  // namespace

std::size_t choiceOf(const std::string& word, std::span<const char* const> choices) {
  std::string all;
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (word == choices[i]) return i;
    all += std::string(i ? ", " : "") + choices[i];
  }
  throw UsageError("\"" + word + "\" is none of: " + all);
}

double secondsOf(const std::string& word) {
  constexpr double longest = 1e9;
  double seconds = 0;
  if (!read(word, seconds) || !(seconds >= 0 && seconds <= longest))
    throw UsageError("\"" + word + "\" is no number of seconds");
  return seconds;
}

std::int64_t wholeNumberOf(const std::string& word) {
  std::int64_t number = 0;
  if (!read(word, number)) throw UsageError("\"" + word + "\" is no whole number");
  return number;
}

std::size_t countOf(const std::string& word) {
  std::size_t number = 0;
  if (!read(word, number)) throw UsageError("\"" + word + "\" is no count");
  return number;
}

bool yesOrNo(const std::string& word) {
  constexpr const char* choices[] = {"yes", "no"};
  return choiceOf(word, choices) == 0;
}

}  // namespace sentrel::sim
