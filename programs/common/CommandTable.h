#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace sentrel::programs {

inline constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

/// One command: what it is called, what is written behind its name, its help, how many words may
/// stand behind its name, and what it does. `Signature` is the type of the function that does it.
template <class Signature>
struct Command {
  std::string_view name;
  const char* arguments;
  /// More than one line where it holds newlines.
  const char* help;
  std::size_t fewest;
  std::size_t most;
  Signature* run;

  constexpr bool takes(std::size_t count) const noexcept {
    return count >= fewest && count <= most;
  }

  /// How a call is written: "NAME ARGUMENTS".
  std::string call() const { return std::string(name) + (*arguments ? " " : "") + arguments; }
};

/// What is written of a command in a list of all: indented, with its help from `column` on.
std::string helpFor(const std::string& call, std::string_view help, std::size_t column);

/// The commands of one subject. A view; the array is expected to stay.
template <class Signature>
class CommandTable {
 public:
  template <std::size_t count>
  constexpr CommandTable(const Command<Signature> (&commands)[count]) noexcept
      : commands_(commands) {}

  /// The first of that name, or null.
  const Command<Signature>* find(std::string_view name) const {
    const auto found = std::ranges::find(commands_, name, &Command<Signature>::name);
    return found == commands_.end() ? nullptr : &*found;
  }

  /// Each command's help, in the table's order; `prefix` stands in front of each name.
  std::string help(std::size_t column, const std::string& prefix = {}) const {
    std::string text;
    for (const auto& command : commands_)
      text += helpFor(prefix + command.call(), command.help, column);
    return text;
  }

 private:
  std::span<const Command<Signature>> commands_;
};

}  // namespace sentrel::programs
