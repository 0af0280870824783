// The whole phone in one process on virtual time: runs scenarios, and shows what they bring about.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "programs/common/CommandLine.h"
#include "programs/common/ExitCode.h"
#include "programs/sim/Command.h"
#include "programs/sim/Script.h"
#include "programs/sim/Timeline.h"

namespace sentrel::sim {
namespace {

using programs::CommandLine;
using programs::ProgramError;

constexpr const char* program = "sentrel-sim";

std::string usage() {
  return "usage: sentrel-sim [options] [SCRIPT [PICTURES]]\n"
         "\n"
         "Runs the home screen and applications of a device on virtual time, as the lines of\n"
         "SCRIPT say, and prints what changes. Every line is checked before the first one runs.\n"
         "An expectation that is not met is printed and the script goes on; what cannot be done\n"
         "ends it. Without SCRIPT it obeys the lines of standard input, one after the other.\n"
         "Screenshots go to the folder PICTURES; a script without one takes none, and standard\n"
         "input has the current folder. The device root is only read.\n"
         "\n" +
         languageHelp();
}

/// Runs steps and keeps count of what went wrong.
class Runner {
 public:
  Runner(Phone& phone, std::string name)
      : phone_(phone), name_(std::move(name)), timeline_(phone, std::cout) {}

  /// False when the rest of a script makes no sense any more.
  bool run(const Step& step) {
    timeline_.printCommand(step.text);
    bool isPossible = true;
    try {
      if (const auto fault = step.run(phone_)) complain(step, *fault);
    } catch (const NotPossible& error) {
      complain(step, error.what());
      isPossible = false;
    }
    timeline_.look();
    return isPossible;
  }

  programs::ExitCode result() const { return faults_ == 0 ? programs::exitDone : programs::exitNo; }

 private:
  void complain(const Step& step, const std::string& fault) {
    ++faults_;
    std::cout.flush();
    std::fprintf(stderr, "%s:%d: %s\n", name_.c_str(), step.line, fault.c_str());
  }

  Phone& phone_;
  std::string name_;
  Timeline timeline_;
  int faults_ = 0;
};

programs::ExitCode runScript(Phone& phone, const std::string& path) {
  std::ifstream input(path);
  if (!input || std::filesystem::is_directory(path)) throw ProgramError(path + ": cannot be read");
  const Script script = readScript(phone, input);
  for (const auto& [number, complaint] : script.complaints)
    std::fprintf(stderr, "%s:%d: %s\n", path.c_str(), number, complaint.c_str());
  if (!script.complaints.empty()) return programs::exitUsage;
  if (const auto& folder = phone.pictureFolder()) std::filesystem::create_directories(*folder);
  Runner runner(phone, path);
  for (const Step& step : script.steps)
    if (!runner.run(step)) break;
  return runner.result();
}

programs::ExitCode runInput(Phone& phone) {
  phone.setPictureFolder(".");
  Runner runner(phone, "input");
  bool hasWrongLine = false;
  int number = 0;
  for (std::string line; std::getline(std::cin, line);) {
    ++number;
    try {
      if (const auto step = prepareStep(phone, number, line)) runner.run(*step);
    } catch (const UsageError& error) {
      hasWrongLine = true;
      std::fprintf(stderr, "input:%d: %s\n", number, error.what());
    }
    std::cout.flush();
  }
  return hasWrongLine ? programs::exitUsage : runner.result();
}

int run(const CommandLine& line) {
  if (line.arguments.size() > 2) throw UsageError("expected SCRIPT and PICTURES at most");
  Phone phone(line.root());
  for (const std::string& complaint : phone.complaints())
    std::fprintf(stderr, "%s: %s\n", program, complaint.c_str());
  if (line.arguments.size() == 2) phone.setPictureFolder(line.arguments[1]);
  return line.arguments.empty() ? runInput(phone) : runScript(phone, line.arguments[0]);
}

}  // namespace
}  // namespace sentrel::sim

int main(int argc, char** argv) {
  using namespace sentrel;
  return programs::runProgram({"sentrel-sim", sim::usage(), sim::run}, argc, argv);
}
