#include "tests/programs/RunningProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "tests/programs/ProgramRun.h"

namespace sentrel {
namespace {

/// Only a failing test waits this long.
constexpr int patienceInMilliseconds = 30'000;

std::array<int, 2> makePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  return ends;
}

}  // namespace

RunningProgram::RunningProgram(const std::string& name, const std::vector<std::string>& arguments) {
  const auto input = makePipe();
  const auto output = makePipe();
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  process_ = spawnProgram(name, arguments, actions);
  close(input[0]);
  close(output[1]);
  input_ = input[1];
  output_ = output[0];
}

RunningProgram::~RunningProgram() {
  endInput();
  close(output_);
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

void RunningProgram::say(const std::string& line) {
  const std::string text = line + "\n";
  if (write(input_, text.data(), text.size()) < 0) throw std::runtime_error("it does not listen");
}

void RunningProgram::endInput() {
  close(std::exchange(input_, -1));
}

std::string RunningProgram::hear() {
  while (heard_.find('\n') == std::string::npos) {
    pollfd waiting{output_, POLLIN, 0};
    std::array<char, 4096> buffer{};
    if (poll(&waiting, 1, patienceInMilliseconds) <= 0) return "(nothing)";
    const ssize_t count = read(output_, buffer.data(), buffer.size());
    if (count <= 0) return "(nothing)";
    heard_.append(buffer.data(), static_cast<std::size_t>(count));
  }
  const std::size_t end = heard_.find('\n');
  std::string line = heard_.substr(0, end);
  heard_.erase(0, end + 1);
  return line;
}

int RunningProgram::exitCode() {
  while (hear() != "(nothing)") {
  }
  pollfd waiting{output_, POLLIN, 0};
  if (poll(&waiting, 1, 0) == 0) return -1;
  int status = -1;
  waitpid(std::exchange(process_, -1), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace sentrel
