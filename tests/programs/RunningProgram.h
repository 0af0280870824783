#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace sentrel {

/// A program of the build while it runs: lines go to its standard input and come from its standard
/// output. It is killed when this object goes.
class RunningProgram {
 public:
  RunningProgram(const std::string& name, const std::vector<std::string>& arguments);
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  void say(const std::string& line);
  void endInput();

  /// The next line that it says; "(nothing)" when it ends or stays silent for long instead.
  std::string hear();

  std::string ask(const std::string& line) {
    say(line);
    return hear();
  }

  /// For signals. The program is not waited for before this object goes.
  pid_t process() const noexcept { return process_; }

  /// Waits for its end; -1 if it does not end by itself.
  int exitCode();

 private:
  pid_t process_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string heard_;
};

}  // namespace sentrel
