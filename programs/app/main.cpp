// An application's process: asks the home-screen process through its own copy of the library.

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "device/bus/DeviceBus.h"
#include "host/SettingsReloader.h"
#include "programs/common/CommandLine.h"
#include "programs/common/ExitCode.h"
#include "programs/common/LineReader.h"
#include "programs/common/RealProcess.h"
#include "programs/common/Words.h"
#include "sentrel/controller/SentrelController.h"

namespace sentrel::programs {
namespace {

constexpr const char* usage =
    "usage: sentrel-app [options] BUNDLE-ID [COMMAND [ITEM]]\n"
    "\n"
    "Runs as the process of the application BUNDLE-ID. Without a command it obeys the lines of\n"
    "standard input, each answered by one line, until they end. ITEM is another bundle identifier\n"
    "in place of the application's own.\n"
    "\n"
    "commands:\n"
    "  ask [ITEM]      whether it needs authentication now: YES or NO\n"
    "  listed [ITEM]   whether it is configured as protected, whatever else: YES or NO\n"
    "  session [ITEM]  whether an open session covers it: YES or NO\n"
    "  unlock [ITEM]   records that it was authenticated just now: prints OK\n";

struct Answer {
  const char* text;
  ExitCode code;
};

Answer yesOrNo(bool yes) {
  return yes ? Answer{"YES", exitDone} : Answer{"NO", exitNo};
}

Answer obey(const std::vector<std::string>& words, const std::string& ownIdentifier) {
  if (words.empty() || words.size() > 2) throw UsageError("expected COMMAND [ITEM]");
  const std::string& command = words[0];
  const std::string& item = words.size() == 2 ? words[1] : ownIdentifier;
  const SNSettings& settings = SNSettings::sharedSettings();
  SentrelController& controller = SentrelController::sharedInstance();
  if (command == "ask") return yesOrNo(settings.isAppProtected(item));
  if (command == "listed") return yesOrNo(settings.isAppProtected(item, /*ignoreAllOther=*/true));
  if (command == "session") return yesOrNo(controller.shouldIgnoreAuthentication(item));
  if (command != "unlock") throw UsageError("unknown command " + command);
  controller.updateLastAuthenticationTime(SessionKey(item));
  return {"OK", exitDone};
}

void answer(const std::vector<std::string>& words, const std::string& ownIdentifier) {
  try {
    std::puts(obey(words, ownIdentifier).text);
  } catch (const UsageError& error) {
    std::puts("?");
    std::fprintf(stderr, "sentrel-app: %s\n", error.what());
  }
}

/// A command is obeyed behind what others posted before it was given.
void obeyInput(RealProcess& self, const std::string& ownIdentifier) {
  const auto commands = std::make_shared<LineReader>(
      self.loop(), LineReader::AtEnd::stop, [&](const std::string& line) {
        const auto words = wordsOf(line);
        if (words.empty()) return;
        self.connection().catchUp();
        self.loop().async([words, ownIdentifier] { answer(words, ownIdentifier); });
      });
  self.loop().add(commands);
  self.loop().run();
}

int run(const CommandLine& line) {
  if (line.arguments.empty() || line.arguments.front().empty())
    throw UsageError("no BUNDLE-ID given");
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const std::string identifier = line.arguments.front();
  const std::vector<std::string> words(line.arguments.begin() + 1, line.arguments.end());
  const auto address = bus::findBus({line.root, line.bus});
  if (!address)
    std::fputs("sentrel-app: no home-screen process runs on this root; nothing will be answered\n",
               stderr);
  RealProcess self("sentrel-app", identifier, line.root, address.value_or(""));
  if (address && !self.connection().isConnected())
    std::fprintf(stderr, "sentrel-app: nobody answers at %s\n", address->c_str());
  const host::SettingsReloader reloader;
  if (words.empty()) {
    obeyInput(self, identifier);
    return exitDone;
  }
  const Answer answered = obey(words, identifier);
  std::puts(answered.text);
  return answered.code;
}

}  // namespace
}  // namespace sentrel::programs

int main(int argc, char** argv) {
  using namespace sentrel::programs;
  return runProgram("sentrel-app", usage, argc, argv, run);
}
