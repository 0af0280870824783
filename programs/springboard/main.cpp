// The home-screen process: holds the unlock sessions and answers every other process.

#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>

#include "device/bus/BusError.h"
#include "device/bus/DeviceBus.h"
#include "host/BiometricEventRelay.h"
#include "host/SettingsReloader.h"
#include "host/SpringBoardObservers.h"
#include "host/SpringBoardResponder.h"
#include "programs/common/CommandLine.h"
#include "programs/common/CommandTable.h"
#include "programs/common/ExitCode.h"
#include "programs/common/LineReader.h"
#include "programs/common/Numbers.h"
#include "programs/common/RealProcess.h"
#include "programs/common/SettingsReport.h"
#include "programs/common/SignalStop.h"
#include "programs/springboard/HomeScreenView.h"
#include "sentrel/bridge/Messages.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/watch/WatchProtocol.h"

namespace sentrel::programs {
namespace {

/// What commands work on.
struct Session {
  explicit Session(RealProcess& process) : self(process), view(process) {}

  RealProcess& self;
  HomeScreenView view;
  ExitCode code = exitDone;
};

/// What a line of input makes no sense for makes the exit code in the end.
void complain(Session& session, const std::string& what) {
  session.code = exitUsage;
  std::fprintf(stderr, "sentrel-springboard: %s\n", what.c_str());
}

/// On a turn of its own: whoever locked the device may be in the middle of something.
void tellOfLock(RealProcess& self) {
  self.loop().async([] { SentrelController::sharedInstance().deviceLocked(); });
}

/// A device that is locked already locks once more: sessions may have begun since.
void lock(Session& session, const std::string&) {
  if (session.self.device().lock().isLocked()) tellOfLock(session.self);
  session.self.device().lock().setLocked(/*value=*/true);
  session.self.loop().async([] { std::puts("locked"); });
}

void unlock(Session& session, const std::string&) {
  session.self.device().lock().setLocked(/*value=*/false);
  std::puts("unlocked");
}

void dim(Session&, const std::string&) {
  SentrelController::sharedInstance().deviceScreenDimmed();
  std::puts("dimmed");
}

void join(Session& session, const std::string& network) {
  session.self.device().wifi().joined = network;
  std::puts("joined");
}

void leave(Session& session, const std::string&) {
  session.self.device().wifi().joined.reset();
  std::puts("left");
}

void sense(Session& session, const std::string& number) {
  const auto event = numberOf<BiometricEvent>(number);
  if (!event) return complain(session, "not the number of an event: \"" + number + "\"");
  session.self.device().sensor().emit(*event);
  std::puts("sensed");
}

void askWatch(Session&, const std::string&) {
  sendGeneralSNWatchQueryWithReply(
      /*preferSecondRSSI=*/true,
      [](const PropertyList& answer) { std::printf("watch %s\n", describe(answer).c_str()); });
}

void tap(Session&, const std::string& mode) {
  vibrateAppleWatch(numberOf<std::int64_t>(mode).value_or(0));
  std::puts("tapped");
}

void quit(Session& session, const std::string&) {
  session.self.loop().stop();
}

void launch(Session& session, const std::string& bundleIdentifier) {
  session.view.launch(bundleIdentifier);
}

void openWindow(Session& session, const std::string&) {
  try {
    session.view.openWindow();
    std::puts("window");
  } catch (const std::runtime_error& error) {
    std::fprintf(stderr, "sentrel-springboard: %s\n", error.what());
  }
}

constexpr Command<void(Session& session, const std::string& argument)> commands[] = {
    {"lock", "", "the device locks", 0, 0, lock},
    {"unlock", "", "and is unlocked", 0, 0, unlock},
    {"dim", "", "the screen dims", 0, 0, dim},
    {"join", "NAME", "the device joins a Wi-Fi network", 1, 1, join},
    {"leave", "", "and leaves it", 0, 0, leave},
    {"sensor", "NUMBER", "the biometric sensor reports the event of that number", 1, 1, sense},
    {"watch", "", "asks about the paired watch, and prints what is known of it", 0, 0, askWatch},
    {"launch", "ID", "opens an application, and prints what becomes of it", 1, 1, launch},
    {"window", "", "shows the screen in a window, for fingers and keys", 0, 0, openWindow},
    {"tap", "MODE", "has the watch tap the wrist: twice for 1, three times for 2, else once", 1, 1,
     tap},
    {"quit", "", "ends the process", 0, 0, quit},
};

constexpr CommandTable table = commands;

std::string usage() {
  return "usage: sentrel-springboard [options]\n"
         "\n"
         "Runs as the home-screen process of a device until it is told to end: by a signal, or by "
         "a\n"
         "command on standard input, one a line:\n" +
         table.help(/*column=*/17) +
         "Prints \"ready ADDRESS\" once others can ask it, and the log lines that they send.\n";
}

/// What stands behind the first space is one argument, with the spaces in it.
void obey(Session& session, const std::string& line) {
  const std::size_t space = line.find(' ');
  const bool hasArgument = space != line.npos;
  const auto* command = table.find(line.substr(0, space));
  if (command && command->takes(hasArgument ? 1 : 0))
    return command->run(session, hasArgument ? line.substr(space + 1) : "");
  complain(session, "unknown command \"" + line + "\"");
}

int run(const CommandLine& line) {
  if (!line.arguments.empty()) throw UsageError("no argument is expected");
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const bus::HomeScreenBus homeBus({line.root(), line.bus});
  RealProcess self("sentrel-springboard", std::string(springBoardBundleIdentifier), line.root(),
                   homeBus.address());
  stopOnSignals(self.loop());
  // Loads the settings, too.
  const host::SettingsReloader reloader;
  reportUnreadSettings("sentrel-springboard", line.root());
  Session session(self);
  self.device().lock().setHandler([&self] { tellOfLock(self); });
  const host::SpringBoardObservers observers;
  const host::BiometricEventRelay relay;
  self.connection().serve(bus::springBoardService, std::string(messageChannelName),
                          host::SpringBoardResponder([](const std::string& text) {
                            std::printf("log %s\n", text.c_str());
                          }));
  std::printf("ready %s\n", homeBus.address().c_str());
  runOnInput(self.loop(), [&session](const std::string& command) { obey(session, command); });
  return session.code;
}

}  // namespace
}  // namespace sentrel::programs

int main(int argc, char** argv) {
  using namespace sentrel::programs;
  return runProgram({"sentrel-springboard", usage(), run}, argc, argv);
}
