// An application's process: asks the home-screen process through its own copy of the library.

#include <cstdio>
#include <string>

#include "device/bus/DeviceBus.h"
#include "host/SettingsReloader.h"
#include "programs/app/Commands.h"
#include "programs/common/CommandLine.h"
#include "programs/common/ExitCode.h"
#include "programs/common/LineReader.h"
#include "programs/common/RealProcess.h"
#include "programs/common/SettingsReport.h"
#include "programs/common/Words.h"

namespace sentrel::programs {
namespace {

std::string usage() {
  return "usage: sentrel-app [options] BUNDLE-ID [COMMAND [ITEM]]\n"
         "\n"
         "Runs as the process of the application BUNDLE-ID. Without a command it obeys the lines "
         "of\n"
         "standard input, until all of them are answered, each by one line; one that makes no "
         "sense\n"
         "is answered by ? and makes the exit code 2 in the end. ITEM is another bundle identifier "
         "in\n"
         "place of the application's own.\n"
         "\n"
         "commands:\n" +
         appCommandsHelp();
}

/// Obeys the lines of standard input, each behind what others posted before it was given, until all
/// of them are answered.
class InputCommands {
 public:
  InputCommands(RealProcess& self, const Application& application)
      : self_(self), application_(application) {}

  ExitCode run() {
    runOnInput(
        self_.loop(), [this](const std::string& line) { take(wordsOf(line)); },
        [this] {
          isAtEnd_ = true;
          stopIfDone();
        });
    return code_;
  }

 private:
  void take(const Words& words) {
    if (words.empty()) return;
    self_.connection().catchUp();
    self_.loop().async([this, words] { answer(words); });
  }

  void answer(const Words& words) {
    ++unanswered_;
    try {
      obey(words, application_, [this](const Answer& answered) { tell(answered.text); });
    } catch (const UsageError& error) {
      code_ = exitUsage;
      std::fprintf(stderr, "sentrel-app: %s\n", error.what());
      tell("?");
    }
  }

  void tell(const std::string& text) {
    std::puts(text.c_str());
    --unanswered_;
    stopIfDone();
  }

  void stopIfDone() {
    if (isAtEnd_ && unanswered_ == 0) self_.loop().stop();
  }

  RealProcess& self_;
  const Application& application_;
  int unanswered_ = 0;
  bool isAtEnd_ = false;
  ExitCode code_ = exitDone;
};

/// Returns once the command is answered.
ExitCode obeyOnce(const Application& application, const Words& words) {
  Answer answered;
  obey(words, application, [&](const Answer& given) {
    answered = given;
    application.loop.stop();
  });
  application.loop.run();
  std::puts(answered.text.c_str());
  return answered.code;
}

int run(const CommandLine& line) {
  if (line.arguments.empty() || line.arguments.front().empty())
    throw UsageError("no BUNDLE-ID given");
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const std::string identifier = line.arguments.front();
  const Words words(line.arguments.begin() + 1, line.arguments.end());
  const auto address = bus::findBus({line.root(), line.bus});
  if (!address)
    std::fputs("sentrel-app: no home-screen process runs on this root; nothing will be answered\n",
               stderr);
  RealProcess self("sentrel-app", identifier, line.root(), address.value_or(""));
  if (address && !self.connection().isConnected())
    std::fprintf(stderr, "sentrel-app: nobody answers at %s\n", address->c_str());
  const host::SettingsReloader reloader;
  reportUnreadSettings("sentrel-app", line.root());
  const Application application{identifier, self.loop(), address.value_or("")};
  return words.empty() ? InputCommands(self, application).run() : obeyOnce(application, words);
}

}  // namespace
}  // namespace sentrel::programs

int main(int argc, char** argv) {
  using namespace sentrel::programs;
  return runProgram({"sentrel-app", usage(), run}, argc, argv);
}
