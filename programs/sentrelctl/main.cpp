// Plays the preferences pane: creates, shows, changes and checks the settings file.

#include <array>
#include <cstdio>
#include <string>

#include "device/bus/DeviceBus.h"
#include "programs/common/CommandLine.h"
#include "programs/common/RealProcess.h"
#include "programs/sentrelctl/Command.h"

namespace sentrel::sentrelctl {
namespace {

using programs::CommandLine;
using programs::RealProcess;
using programs::UsageError;

std::array<CommandTable, 7> tables() {
  return {storeCommands(),    listCommands(),    checkCommands(), explainCommands(),
          passcodeCommands(), networkCommands(), folderCommands()};
}

const Command& commandNamed(const std::string& name) {
  for (const CommandTable& table : tables())
    if (const Command* command = table.find(name)) return *command;
  throw UsageError("unknown command " + name);
}

std::string usage() {
  std::string text =
      "usage: sentrelctl [options] COMMAND [ARGUMENT...]\n"
      "\n"
      "Reads and changes the settings file of a device and tells its processes of each change.\n"
      "\n"
      "commands:\n";
  for (const CommandTable& table : tables())
    text += table.help(/*column=*/34);
  return text;
}

int run(const CommandLine& line) {
  if (line.arguments.empty()) throw UsageError("no command given");
  const Command& command = commandNamed(line.arguments.front());
  const Arguments arguments(line.arguments.begin() + 1, line.arguments.end());
  if (arguments.size() == 1 && arguments[0] == "--help") {
    std::fputs(usage().c_str(), stdout);
    return programs::exitDone;
  }
  if (!command.takes(arguments.size())) throw UsageError("expected " + command.call());

  const auto address = bus::findBus({line.root, line.bus});
  RealProcess self("sentrelctl", "com.apple.Preferences", line.root, address.value_or(""));
  const auto code = command.run({storage::DeviceRoot(line.root)}, arguments);
  self.connection().catchUp();
  return code;
}

}  // namespace
}  // namespace sentrel::sentrelctl

int main(int argc, char** argv) {
  using namespace sentrel;
  return programs::runProgram("sentrelctl", sentrelctl::usage(), argc, argv, sentrelctl::run);
}
