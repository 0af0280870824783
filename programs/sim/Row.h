#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "programs/common/CommandLine.h"

namespace sentrel::sim {

class Phone;

using Words = std::vector<std::string>;
using programs::UsageError;

/// Something that the user cannot do as things stand on the phone.
class NotPossible : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

/// One word of the script language: how it is called, and what becomes of its arguments. `prepare`
/// throws UsageError for arguments that make no sense on this phone, and runs nothing.
template <class Prepared>
struct Row {
  const char* name;
  const char* arguments;
  const char* help;
  std::size_t fewest;
  std::size_t most;
  Prepared (*prepare)(Phone& phone, const Words& arguments);
};

template <class Prepared>
const Row<Prepared>* findRow(std::span<const Row<Prepared>> rows, const std::string& name) {
  const auto row = std::ranges::find(rows, name, &Row<Prepared>::name);
  return row == rows.end() ? nullptr : &*row;
}

/// `words` are the row's name and its arguments.
template <class Prepared>
Prepared prepareRow(const Row<Prepared>& row, Phone& phone, const Words& words) {
  const Words arguments(words.begin() + 1, words.end());
  if (arguments.size() < row.fewest || arguments.size() > row.most)
    throw UsageError("expected: " + std::string(row.name) + " " + row.arguments);
  return row.prepare(phone, arguments);
}

/// A line of help for each row.
template <class Prepared>
std::string helpFor(std::span<const Row<Prepared>> rows, const std::string& prefix = {}) {
  constexpr std::size_t helpColumn = 42;
  std::string text;
  for (const auto& row : rows) {
    std::string call = "  " + prefix + row.name + " " + row.arguments;
    call.resize(std::max(call.size() + 1, helpColumn), ' ');
    text += call + row.help + "\n";
  }
  return text;
}

/// One of a few words; throws UsageError for any other.
std::size_t choiceOf(const std::string& word, std::span<const char* const> choices);

double secondsOf(const std::string& word);
std::int64_t wholeNumberOf(const std::string& word);
std::size_t countOf(const std::string& word);
bool yesOrNo(const std::string& word);

}  // namespace sentrel::sim
