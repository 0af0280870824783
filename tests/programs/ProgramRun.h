#pragma once

#include <spawn.h>
#include <sys/types.h>

#include <string>
#include <vector>

namespace sentrel {

/// What a program left behind.
struct ProgramResult {
  int code;
  std::string output;
  std::string errors;
};

/// Starts a program of the build, and is done with `actions` then; -1 where it cannot.
pid_t spawnProgram(const std::string& name, std::vector<std::string> arguments,
                   posix_spawn_file_actions_t& actions);

/// Runs a program of the build to its end, with `input` on its standard input.
ProgramResult runProgram(const std::string& name, const std::vector<std::string>& arguments,
                         const std::string& input = {});

}  // namespace sentrel
