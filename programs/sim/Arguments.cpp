#include "programs/sim/Arguments.h"

#include "programs/common/Numbers.h"

namespace sentrel::sim {

using programs::numberOf;

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
  const auto seconds = numberOf<double>(word);
  if (!seconds || !(*seconds >= 0 && *seconds <= longest))
    throw UsageError("\"" + word + "\" is no number of seconds");
  return *seconds;
}

std::int64_t wholeNumberOf(const std::string& word) {
  if (const auto number = numberOf<std::int64_t>(word)) return *number;
  throw UsageError("\"" + word + "\" is no whole number");
}

std::size_t countOf(const std::string& word) {
  if (const auto number = numberOf<std::size_t>(word)) return *number;
  throw UsageError("\"" + word + "\" is no count");
}

bool yesOrNo(const std::string& word) {
  constexpr const char* choices[] = {"yes", "no"};
  return choiceOf(word, choices) == 0;
}

}  // namespace sentrel::sim
