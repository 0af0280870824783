#include "programs/common/CommandLine.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>

#include "programs/common/CommandTable.h"
#include "programs/common/ExitCode.h"

namespace sentrel::programs {
namespace {

std::string usageOf(const Program& program) {
  constexpr std::size_t column = 18;
  std::string text = program.usage + "\noptions:\n";
  if (program.hasDevice)
    text += helpFor("--root DIR", "the device's root folder (else SENTREL_ROOT)", column) +
            helpFor("--bus ADDRESS",
                    "the message bus (else SENTREL_BUS, else that of the home-screen\n"
                    "process on the same root)",
                    column);
  if (program.hasJson) text += helpFor("--json", "prints what is asked for as JSON", column);
  return text + helpFor("-h, --help", "this text", column) +
         helpFor("--version", "the program's version", column) +
         "Behind a word -- nothing is an option.\n"
         "\nexit codes: 0 done, 1 the answer is no or a check found faults, 2 wrong usage,\n"
         "3 could not\n";
}

/// Takes the options out of a program's words.
class Parser {
 public:
  Parser(const Program& program, Words words) : program_(program), words_(std::move(words)) {}

  /// None where help or the version was asked for and printed.
  std::optional<CommandLine> parse() {
    const char* root = std::getenv("SENTREL_ROOT");
    line_.namedRoot = root ? root : "";
    while (next_ < words_.size()) {
      const std::string word = words_[next_++];
      if (word == "--") break;
      const bool isOption = word == "-h" || word.starts_with("--");
      if (!isOption)
        line_.arguments.push_back(word);
      else if (!takeOption(word))
        return std::nullopt;
    }
    line_.arguments.insert(line_.arguments.end(), words_.begin() + static_cast<long>(next_),
                           words_.end());
    return line_;
  }

 private:
  /// False where nothing is left to do.
  bool takeOption(const std::string& word) {
    if (word == "-h" || word == "--help")
      return std::fputs(usageOf(program_).c_str(), stdout), false;
    if (word == "--version") return std::printf("%s " SENTREL_VERSION "\n", program_.name), false;
    if (program_.hasJson && word == "--json") return line_.json = true;
    const std::string name = word.substr(0, word.find('='));
    if (!program_.hasDevice || (name != "--root" && name != "--bus"))
      throw UsageError("unknown option " + word);
    (name == "--root" ? line_.namedRoot : line_.bus) = valueOf(word, name);
    return true;
  }

  std::string valueOf(const std::string& word, const std::string& name) {
    if (word != name) return word.substr(name.size() + 1);
    if (next_ == words_.size()) throw UsageError(name + " needs a value");
    return words_[next_++];
  }

  const Program& program_;
  const Words words_;
  std::size_t next_ = 0;
  CommandLine line_;
};

int runGuarded(const Program& program, Words words) {
  try {
    const auto line = Parser(program, std::move(words)).parse();
    return line ? program.body(*line) : exitDone;
  } catch (const UsageError& error) {
    std::fprintf(stderr, "%s: %s (try --help)\n", program.name, error.what());
    return exitUsage;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", program.name, error.what());
    return exitCouldNot;
  }
}

}  // namespace

const std::string& CommandLine::root() const {
  if (namedRoot.empty())
    throw UsageError("no device root: name one with --root DIR or in SENTREL_ROOT");
  if (!std::filesystem::is_directory(namedRoot))
    throw ProgramError("the device root " + namedRoot + " is no folder");
  return namedRoot;
}

int runProgram(const Program& program, int argc, char** argv) {
  const int code = runGuarded(program, Words(argv + 1, argv + argc));
  const bool isFlushed = std::fflush(stdout) == 0;
  if (isFlushed && std::ferror(stdout) == 0) return code;
  std::fprintf(stderr, "%s: standard output could not be written\n", program.name);
  return exitCouldNot;
}

}  // namespace sentrel::programs
