#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "programs/common/CommandLine.h"
#include "programs/common/Words.h"

namespace sentrel::sim {

using programs::UsageError;
using programs::Words;

// What a word of a script means; each throws UsageError for a word that means nothing of the kind.

/// Which of a few words it is.
std::size_t choiceOf(const std::string& word, std::span<const char* const> choices);

double secondsOf(const std::string& word);
std::int64_t wholeNumberOf(const std::string& word);
std::size_t countOf(const std::string& word);
bool yesOrNo(const std::string& word);

}  // namespace sentrel::sim
