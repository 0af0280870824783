// Plays the preferences pane: creates, shows, changes and checks the settings file.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "device/bus/DeviceBus.h"
#include "programs/common/CommandLine.h"
#include "programs/common/RealProcess.h"
#include "programs/sentrelctl/Command.h"

namespace sentrel::sentrelctl {
namespace {

using programs::CommandLine;
using programs::RealProcess;
using programs::UsageError;

std::vector<Command> allCommands() {
  std::vector<Command> commands;
  for (const auto table : {storeCommands(), listCommands(), checkCommands(), explainCommands(),
                           passcodeCommands(), networkCommands(), folderCommands()})
    commands.insert(commands.end(), table.begin(), table.end());
  return commands;
}

std::string usage() {
  std::string text =
      "usage: sentrelctl [options] COMMAND [ARGUMENT...]\n"
      "\n"
      "Reads and changes the settings file of a device and tells its processes of each change.\n"
      "\n"
      "commands:\n";
  for (const Command& command : allCommands()) {
    std::string call = std::string("  ") + command.name + " " + command.argumentsHelp;
    call.resize(std::max<std::size_t>(call.size() + 1, 34), ' ');
    text += call + command.help + "\n";
  }
  return text;
}

int run(const CommandLine& line) {
  if (line.arguments.empty()) throw UsageError("no command given");
  const auto commands = allCommands();
  const auto command = std::ranges::find(commands, line.arguments.front(), &Command::name);
  if (command == commands.end()) throw UsageError("unknown command " + line.arguments.front());
  const Arguments arguments(line.arguments.begin() + 1, line.arguments.end());
  if (arguments.size() == 1 && arguments[0] == "--help") {
    std::fputs(usage().c_str(), stdout);
    return programs::exitDone;
  }
  if (arguments.size() < command->fewest || arguments.size() > command->most)
    throw UsageError(std::string("expected ") + command->name + " " + command->argumentsHelp);

  const auto address = bus::findBus({line.root, line.bus});
  RealProcess self("sentrelctl", "com.apple.Preferences", line.root, address.value_or(""));
  const auto code = command->run({storage::DeviceRoot(line.root)}, arguments);
  self.connection().catchUp();
  return code;
}

}  // namespace
}  // namespace sentrel::sentrelctl

int main(int argc, char** argv) {
  using namespace sentrel;
  const std::string usage = sentrelctl::usage();
  return programs::runProgram("sentrelctl", usage.c_str(), argc, argv, sentrelctl::run);
}
