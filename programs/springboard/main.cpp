// The home-screen process: holds the unlock sessions and answers every other process.

#include <charconv>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "device/bus/BusError.h"
#include "device/bus/DeviceBus.h"
#include "host/BiometricEventRelay.h"
#include "host/SettingsReloader.h"
#include "host/SpringBoardObservers.h"
#include "host/SpringBoardResponder.h"
#include "programs/common/CommandLine.h"
#include "programs/common/ExitCode.h"
#include "programs/common/LineReader.h"
#include "programs/common/RealProcess.h"
#include "programs/common/SignalStop.h"
#include "programs/springboard/HomeScreenView.h"
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
    "  lock           the device locks\n"
    "  unlock         and is unlocked\n"
    "  dim            the screen dims\n"
    "  join NAME      the device joins a Wi-Fi network\n"
    "  leave          and leaves it\n"
    "  sensor NUMBER  the biometric sensor reports the event of that number\n"
    "  watch          asks about the paired watch, and prints what is known of it\n"
    "  launch ID      opens an application, and prints what becomes of it\n"
    "  window         shows the screen in a window, for fingers and keys\n"
    "  tap MODE       has the watch tap the wrist: twice for 1, three times for 2, else once\n"
    "  quit           ends the process\n"
    "Prints \"ready ADDRESS\" once others can ask it, and the log lines that they send.\n";

/// What commands work on.
struct Session {
  explicit Session(RealProcess& process) : self(process), view(process) {}

  RealProcess& self;
  HomeScreenView view;
};

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
  BiometricEvent event = 0;
  const char* end = number.data() + number.size();
  const auto [read, error] = std::from_chars(number.data(), end, event);
  if (error != std::errc() || read != end) {
    std::fprintf(stderr, "sentrel-springboard: not the number of an event: \"%s\"\n",
                 number.c_str());
    return;
  }
  session.self.device().sensor().emit(event);
  std::puts("sensed");
}

void askWatch(Session&, const std::string&) {
  sendGeneralSNWatchQueryWithReply(
      /*preferSecondRSSI=*/true,
      [](const PropertyList& answer) { std::printf("watch %s\n", describe(answer).c_str()); });
}

void tap(Session&, const std::string& mode) {
  vibrateAppleWatch(PropertyList(mode).integerValue());
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

struct Command {
  std::string_view name;
  bool takesArgument;
  void (*act)(Session& session, const std::string& argument);
};

constexpr Command commands[] = {
    {"lock", false, lock},    {"unlock", false, unlock},     {"dim", false, dim},
    {"join", true, join},     {"leave", false, leave},       {"sensor", true, sense},
    {"launch", true, launch}, {"window", false, openWindow}, {"watch", false, askWatch},
    {"tap", true, tap},       {"quit", false, quit},
};

void obey(Session& session, const std::string& line) {
  const std::size_t space = line.find(' ');
  const std::string name = line.substr(0, space);
  for (const Command& command : commands)
    if (name == command.name && command.takesArgument == (space != line.npos))
      return command.act(session, command.takesArgument ? line.substr(space + 1) : "");
  std::fprintf(stderr, "sentrel-springboard: unknown command \"%s\"\n", line.c_str());
}

int run(const CommandLine& line) {
  if (!line.arguments.empty()) throw UsageError("no argument is expected");
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const bus::HomeScreenBus homeBus({line.root, line.bus});
  RealProcess self("sentrel-springboard", std::string(springBoardBundleIdentifier), line.root,
                   homeBus.address());
  stopOnSignals(self.loop());
  // Before the settings are loaded: a change in between is not missed.
  const host::SettingsReloader reloader;
  SNSettings::sharedSettings();
  Session session(self);
  self.device().lock().setHandler([&self] { tellOfLock(self); });
  const host::SpringBoardObservers observers;
  const host::BiometricEventRelay relay;
  self.connection().serve(bus::springBoardService, std::string(messageChannelName),
                          host::SpringBoardResponder([](const std::string& text) {
                            std::printf("log %s\n", text.c_str());
                          }));
  std::printf("ready %s\n", homeBus.address().c_str());
  // The loop does not keep it.
  const auto reader = std::make_shared<LineReader>(
      self.loop(), LineReader::AtEnd::goOn,
      [&session](const std::string& command) { obey(session, command); });
  self.loop().add(reader);
  self.loop().run();
  return exitDone;
}

}  // namespace
}  // namespace sentrel::programs

int main(int argc, char** argv) {
  using namespace sentrel::programs;
  return runProgram("sentrel-springboard", usage, argc, argv, run);
}
