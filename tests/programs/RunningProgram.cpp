#include "tests/programs/RunningProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

extern char** environ;

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
  std::vector<std::string> words{SENTREL_PROGRAMS "/" + name};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words)
    pointers.push_back(word.data());
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  const int failure =
      posix_spawn(&process_, words[0].c_str(), &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(input[0]);
  close(output[1]);
  input_ = input[1];
  output_ = output[0];
  if (failure != 0) process_ = -1;
}

RunningProgram::~RunningProgram() {
  close(input_);
  close(output_);
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

void RunningProgram::say(const std::string& line) {
  const std::string text = line + "\n";
  if (write(input_, text.data(), text.size()) < 0) throw std::runtime_error("it does not listen");
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
