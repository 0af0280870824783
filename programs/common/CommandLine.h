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

/// What a program was called with.
struct CommandLine {
  /// The device's root folder on this machine. Throws UsageError where none was named, ProgramError
  /// where it is no folder.
  const std::string& root() const;

  /// As it was named, in --root or else in SENTREL_ROOT; empty where it was not.
  std::string namedRoot;
  /// The message bus, where one was named.
  std::string bus;
  /// Whether what is told is for programs.
  bool json = false;
  /// What is left without the options.
  Words arguments;
};

/// One program: its name, its help, its body, and which options it takes beside --help and
/// --version.
struct Program {
  const char* name;
  std::string usage;
  int (*body)(const CommandLine& line);
  /// --root and --bus.
  bool hasDevice = true;
  bool hasJson = false;
};

/// Runs a program and returns its exit code. Options stand anywhere; behind a word "--" there are
/// none. Prints help and version where asked to. Turns a wrong call and what the body throws into
/// one line on standard error and an exit code, and likewise an output that could not be written.
int runProgram(const Program& program, int argc, char** argv);

}  // namespace sentrel::programs
