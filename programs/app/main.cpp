// An application's process: asks the home-screen process through its own copy of the library.

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "device/bus/DeviceBus.h"
#include "host/SettingsReloader.h"
#include "programs/app/Commands.h"
#include "programs/common/CommandLine.h"
#include "programs/common/ExitCode.h"
#include "programs/common/LineReader.h"
#include "programs/common/RealProcess.h"
#include "programs/common/Words.h"

namespace sentrel::programs {
namespace {

std::string usage() {
  return "usage: sentrel-app [options] BUNDLE-ID [COMMAND [ITEM]]\n"
         "\n"
         "Runs as the process of the application BUNDLE-ID. Without a command it obeys the lines "
         "of\n"
         "standard input, each answered by one line, until they end. ITEM is another bundle "
         "identifier\n"
         "in place of the application's own.\n"
         "\n"
         "commands:\n" +
         appCommandsHelp();
}

void answer(const Words& words, const std::string& ownIdentifier) {
  try {
    obey(words, ownIdentifier, [](const Answer& answered) { std::puts(answered.text.c_str()); });
  } catch (const UsageError& error) {
    std::puts("?");
    std::fprintf(stderr, "sentrel-app: %s\n", error.what());
  }
}

/// A command is obeyed behind what others posted before it was given.
void obeyInput(RealProcess& self, const std::string& ownIdentifier) {
  runOnInput(self.loop(), AtEndOfInput::stop, [&](const std::string& line) {
    const Words words = wordsOf(line);
    if (words.empty()) return;
    self.connection().catchUp();
    self.loop().async([words, ownIdentifier] { answer(words, ownIdentifier); });
  });
}

/// Ends the loop once the bus is gone: what waits for the home screen would wait for ever.
class EndOfBus final : public loop::RunLoop::Source {
 public:
  explicit EndOfBus(RealProcess& self) : self_(self) {}

  Wish prepare() override {
    if (!self_.connection().isConnected()) self_.loop().stop();
    return {};
  }
  void dispatch() override {}

 private:
  RealProcess& self_;
};

/// Returns once the command is answered, or nobody is left to answer it.
ExitCode obeyOnce(RealProcess& self, const Words& words, const std::string& ownIdentifier) {
  std::optional<Answer> answered;
  obey(words, ownIdentifier, [&](const Answer& given) {
    answered = given;
    self.loop().stop();
  });
  const auto end = std::make_shared<EndOfBus>(self);
  self.loop().add(end);
  self.loop().run();
  const Answer last = answered.value_or(Answer{"NO", exitNo});
  std::puts(last.text.c_str());
  return last.code;
}

int run(const CommandLine& line) {
  if (line.arguments.empty() || line.arguments.front().empty())
    throw UsageError("no BUNDLE-ID given");
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const std::string identifier = line.arguments.front();
  const Words words(line.arguments.begin() + 1, line.arguments.end());
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
  return obeyOnce(self, words, identifier);
}

}  // namespace
}  // namespace sentrel::programs

int main(int argc, char** argv) {
  using namespace sentrel::programs;
  return runProgram("sentrel-app", usage(), argc, argv, run);
}
