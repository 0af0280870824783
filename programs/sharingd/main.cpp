// The sharing daemon's process: answers what is asked about the watch, and lets it tap the wrist.

#include <cstdio>
#include <string>

#include "device/bus/BusXpc.h"
#include "device/bus/DeviceBus.h"
#include "programs/common/CommandLine.h"
#include "programs/common/ExitCode.h"
#include "programs/common/LineReader.h"
#include "programs/common/RealProcess.h"
#include "programs/common/SignalStop.h"
#include "programs/common/WatchAnswering.h"
#include "programs/common/WatchCommands.h"

namespace sentrel::programs {
namespace {

constexpr const char* program = "sentrel-sharingd";

std::string usage() {
  return "usage: sentrel-sharingd [options]\n"
         "\n"
         "Runs as the sharing daemon of a device, on the bus of its home-screen process, until it "
         "is\n"
         "told to end: by a signal, or by a command on standard input. It has a watch, at first "
         "paired\n"
         "but off the wrist, locked and far; each command is one line and is answered by one:\n" +
         watchCommandsHelp() +
         "  quit                 ends the process\n"
         "Prints \"ready\" once it answers, and \"tap\" when the watch is to tap the wrist.\n";
}

void obey(RealProcess& self, const std::string& line, ExitCode& code) {
  if (line == "quit") return self.loop().stop();
  try {
    std::puts(obeyWatchCommand(self.device().watch(), line).c_str());
  } catch (const UsageError& error) {
    code = exitUsage;
    std::puts("?");
    std::fprintf(stderr, "%s: %s\n", program, error.what());
  }
}

void serve(RealProcess& self) {
  bus::serveMachService(self.connection(), std::string(sharingDaemonServiceName),
                        watchResponder(self.device()));
  bus::serveAudioControl(self.connection(), std::string(nanoAudioControlServiceName),
                         [&self](double intensity) {
                           self.device().watch().tap(intensity);
                           std::puts("tap");
                         });
}

int run(const CommandLine& line) {
  if (!line.arguments.empty()) throw UsageError("no argument is expected");
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const auto address = bus::findBus({line.root(), line.bus});
  if (!address)
    throw ProgramError("no home-screen process runs on " + line.root() +
                       ": start sentrel-springboard there first");
  RealProcess self(program, std::string(sharingDaemonBundleIdentifier), line.root(), *address);
  stopOnSignals(self.loop());
  serve(self);
  std::puts("ready");
  ExitCode code = exitDone;
  runOnInput(self.loop(), [&](const std::string& command) { obey(self, command, code); });
  return code;
}

}  // namespace
}  // namespace sentrel::programs

int main(int argc, char** argv) {
  using namespace sentrel::programs;
  return runProgram({program, usage(), run}, argc, argv);
}
