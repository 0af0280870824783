#include "tests/programs/ProgramRun.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/storage/TemporaryFolder.h"

extern char** environ;

namespace sentrel {
namespace {

std::vector<char*> pointersTo(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (std::string& word : words)
    pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

ProgramResult runProgram(const std::string& name, const std::vector<std::string>& arguments,
                         const std::string& input) {
  const storage::TemporaryFolder folder;
  folder.put("in", input);
  std::vector<std::string> words{SENTREL_PROGRAMS "/" + name};
  words.insert(words.end(), arguments.begin(), arguments.end());
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, folder.path("in").c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, folder.path("out").c_str(),
                                   O_WRONLY | O_CREAT, 0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, folder.path("err").c_str(),
                                   O_WRONLY | O_CREAT, 0600);
  pid_t child = -1;
  const int failure =
      posix_spawn(&child, words[0].c_str(), &actions, nullptr, pointersTo(words).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = -1;
  if (failure == 0) waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.content("out"),
          folder.content("err")};
}

}  // namespace sentrel
