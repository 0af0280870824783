#include "tests/programs/ProgramRun.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

extern char** environ;

namespace sentrel {
namespace {

std::string contentOf(const std::filesystem::path& file) {
  std::ostringstream content;
  content << std::ifstream(file).rdbuf();
  return content.str();
}

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
  std::string folder = (std::filesystem::temp_directory_path() / "sentrel-run-XXXXXX").string();
  if (!mkdtemp(folder.data())) return {-1, "", "no temporary folder"};
  const std::filesystem::path output = std::filesystem::path(folder) / "out";
  const std::filesystem::path errors = std::filesystem::path(folder) / "err";

  const std::filesystem::path given = std::filesystem::path(folder) / "in";
  std::ofstream(given) << input;

  std::vector<std::string> words{SENTREL_PROGRAMS "/" + name};
  words.insert(words.end(), arguments.begin(), arguments.end());
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, given.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT,
                                   0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT,
                                   0600);
  pid_t child = -1;
  const int failure =
      posix_spawn(&child, words[0].c_str(), &actions, nullptr, pointersTo(words).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = -1;
  if (failure == 0) waitpid(child, &status, 0);
  ProgramResult result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(output),
                       contentOf(errors)};
  std::filesystem::remove_all(folder);
  return result;
}

}  // namespace sentrel
