// The home-screen process: holds the unlock sessions and answers every other process.

#include <cstdio>
#include <memory>
#include <string>

#include "device/bus/BusError.h"
#include "device/bus/DeviceBus.h"
#include "host/SettingsReloader.h"
#include "host/SpringBoardObservers.h"
#include "host/SpringBoardResponder.h"
#include "programs/common/CommandLine.h"
#include "programs/common/ExitCode.h"
#include "programs/common/LineReader.h"
#include "programs/common/RealProcess.h"
#include "programs/common/SignalStop.h"
#include "sentrel/bridge/Messages.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/watch/WatchProtocol.h"

namespace sentrel::programs {
namespace {

constexpr const char* usage =
    "usage: sentrel-springboard [options]\n"
    "\n"
    "Runs as the home-screen process of a device until it is told to end: by a signal, or by a\n"
    "command on standard input, one a line:\n"
    "  lock         the device locks\n"
    "  join NAME    the device joins a Wi-Fi network\n"
    "  leave        and leaves it\n"
    "  watch        asks about the paired watch, and prints what is known of it\n"
    "  tap MODE     has the watch tap the wrist: twice for 1, three times for 2, else once\n"
    "  quit         ends the process\n"
    "Prints \"ready ADDRESS\" once others can ask it, and the log lines that they send.\n";

void askWatch() {
  sendGeneralSNWatchQueryWithReply(
      /*preferSecondRSSI=*/true,
      [](const PropertyList& answer) { std::printf("watch %s\n", describe(answer).c_str()); });
}

void obey(RealProcess& self, const std::string& command) {
  constexpr std::string_view join = "join ";
  constexpr std::string_view tap = "tap ";
  if (command == "lock") {
    SentrelController::sharedInstance().deviceLocked();
    std::puts("locked");
  } else if (command.starts_with(join)) {
    self.device().wifi().joined = command.substr(join.size());
    std::puts("joined");
  } else if (command == "leave") {
    self.device().wifi().joined.reset();
    std::puts("left");
  } else if (command == "watch") {
    askWatch();
  } else if (command.starts_with(tap)) {
    vibrateAppleWatch(PropertyList(command.substr(tap.size())).integerValue());
    std::puts("tapped");
  } else if (command == "quit") {
    self.loop().stop();
  } else {
    std::fprintf(stderr, "sentrel-springboard: unknown command \"%s\"\n", command.c_str());
  }
}

int run(const CommandLine& line) {
  if (!line.arguments.empty()) throw UsageError("no argument is expected");
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const bus::HomeScreenBus homeBus({line.root, line.bus});
  RealProcess self("sentrel-springboard", std::string(springBoardBundleIdentifier), line.root,
                   homeBus.address());
  stopOnSignals(self.loop());
  SNSettings::sharedSettings();
  const host::SettingsReloader reloader;
  const host::SpringBoardObservers observers;
  self.connection().serve(bus::springBoardService, std::string(messageChannelName),
                          host::SpringBoardResponder([](const std::string& text) {
                            std::printf("log %s\n", text.c_str());
                          }));
  std::printf("ready %s\n", homeBus.address().c_str());
  const auto commands =
      std::make_shared<LineReader>(self.loop(), LineReader::AtEnd::goOn,
                                   [&self](const std::string& command) { obey(self, command); });
  self.loop().add(commands);
  self.loop().run();
  return exitDone;
}

}  // namespace
}  // namespace sentrel::programs

int main(int argc, char** argv) {
  using namespace sentrel::programs;
  return runProgram("sentrel-springboard", usage, argc, argv, run);
}
