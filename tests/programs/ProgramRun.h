#pragma once

#include <string>
#include <vector>

namespace sentrel {

/// What a program left behind.
struct ProgramResult {
  int code;
  std::string output;
  std::string errors;
};

/// Runs a program of the build to its end, with `input` on its standard input.
ProgramResult runProgram(const std::string& name, const std::vector<std::string>& arguments,
                         const std::string& input = {});

}  // namespace sentrel
