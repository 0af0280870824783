#pragma once

#include <stdexcept>
#include <string>

#include "programs/common/Words.h"

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
  Words arguments;
};

/// Runs a program's body with what it was called with: --root and --bus, with SENTREL_ROOT in place
/// of a missing --root, and what stands behind the options, which end at the first argument. Prints
/// the usage where asked to. Turns a wrong call, a root that is no folder, and what the body throws
/// into one line on standard error and an exit code.
int runProgram(const char* name, const std::string& usage, int argc, char** argv,
               int (*body)(const CommandLine&));

}  // namespace sentrel::programs
