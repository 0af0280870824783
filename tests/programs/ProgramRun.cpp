#include "tests/programs/ProgramRun.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/TemporaryFolder.h"

extern char** environ;

namespace sentrel {

pid_t spawnProgram(const std::string& name, std::vector<std::string> arguments,
                   posix_spawn_file_actions_t& actions) {
  arguments.insert(arguments.begin(), SENTREL_PROGRAMS "/" + name);
  std::vector<char*> words;
  for (std::string& argument : arguments)
    words.push_back(argument.data());
  words.push_back(nullptr);
  pid_t child = -1;
  const int failure = posix_spawn(&child, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return failure == 0 ? child : -1;
}

ProgramResult runProgram(const std::string& name, const std::vector<std::string>& arguments,
                         const std::string& input) {
  const TemporaryFolder folder;
  folder.put("in", input);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, folder.path("in").c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, folder.path("out").c_str(),
                                   O_WRONLY | O_CREAT, 0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, folder.path("err").c_str(),
                                   O_WRONLY | O_CREAT, 0600);
  const pid_t child = spawnProgram(name, arguments, actions);
  int status = -1;
  if (child > 0) waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.content("out"),
          folder.content("err")};
}

}  // namespace sentrel
