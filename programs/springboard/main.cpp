// The home-screen process: holds the unlock sessions and answers every other process.

#include <charconv>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string>

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
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Messages.h"
#include "sentrel/controller/SentrelController.h"

namespace sentrel::programs {
namespace {

constexpr const char* usage =
    "usage: sentrel-springboard [options]\n"
    "\n"
    "Runs as the home-screen process of a device until it is told to end: by a signal, or by a\n"
    "command on standard input, one a line:\n"
    "  lock           the device locks\n"
    "  join NAME      the device joins a Wi-Fi network\n"
    "  leave          and leaves it\n"
    "  sensor NUMBER  the biometric sensor reports the event of that number\n"
    "  quit           ends the process\n"
    "Prints \"ready ADDRESS\" once others can ask it, and the log lines that they send.\n";

bus::RunLoop* signalledLoop = nullptr;

void stopOnSignal(int) {
  if (signalledLoop) signalledLoop->stop();
}

void watchSignals(bus::RunLoop& loop) {
  signalledLoop = &loop;
  std::signal(SIGINT, stopOnSignal);
  std::signal(SIGTERM, stopOnSignal);
}

void sense(simulated::SimulatedSensor& sensor, const std::string& number) {
  BiometricEvent event = 0;
  const char* end = number.data() + number.size();
  const auto [read, error] = std::from_chars(number.data(), end, event);
  if (error != std::errc() || read != end) {
    std::fprintf(stderr, "sentrel-springboard: not the number of an event: \"%s\"\n",
                 number.c_str());
    return;
  }
  sensor.emit(event);
  std::puts("sensed");
}

void obey(RealProcess& self, const std::string& command) {
  constexpr std::string_view join = "join ";
  constexpr std::string_view sensor = "sensor ";
  if (command == "lock") {
    SentrelController::sharedInstance().deviceLocked();
    std::puts("locked");
  } else if (command.starts_with(join)) {
    self.device().wifi().joined = command.substr(join.size());
    std::puts("joined");
  } else if (command == "leave") {
    self.device().wifi().joined.reset();
    std::puts("left");
  } else if (command.starts_with(sensor)) {
    sense(self.device().sensor(), command.substr(sensor.size()));
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
  watchSignals(self.loop());
  SNSettings::sharedSettings();
  // Applications have the home screen take the sensor in this one's name.
  SNTouchIDManager::sharedManager();
  const host::SettingsReloader reloader;
  const host::SpringBoardObservers observers;
  const host::BiometricEventRelay relay;
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
