#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace sentrel::programs {

/// A call that makes no sense; the text says what was wrong with it.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Something that could not be done: one clear line of what, where and what to do.
class ProgramError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What every program understands.
struct CommandLine {
  /// The device's root folder on this machine.
  std::string root;
  /// The message bus, where one was named.
  std::string bus;
  /// What is left after the options.
  std::vector<std::string> arguments;
};

/// Reads --root and --bus, with SENTREL_ROOT in place of a missing --root; prints the usage or the
/// version and ends the program where asked to. Options end at the first argument. Throws
/// UsageError, also when no root is named, and ProgramError when the root is no folder.
CommandLine parseCommandLine(int argc, char** argv, const char* usage);

/// Runs a program's body and turns what it throws into one line on standard error and an exit code.
int runProgram(const char* name, const char* usage, int argc, char** argv,
               int (*body)(const CommandLine&));

}  // namespace sentrel::programs
