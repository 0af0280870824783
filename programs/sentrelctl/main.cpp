// Plays the preferences pane: creates, shows, changes and checks the settings file.

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <string_view>

#include "device/bus/DeviceBus.h"
#include "programs/common/CommandLine.h"
#include "programs/common/RealProcess.h"
#include "programs/common/SettingsValue.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/Explain.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {
namespace {

using programs::CommandLine;
using programs::RealProcess;
using programs::UsageError;

std::array<CommandTable, 7> tables() {
  return {storeCommands(),  listCommands(),    passcodeCommands(), networkCommands(),
          folderCommands(), explainCommands(), checkCommands()};
}

constexpr std::string_view withJson[] = {"show", "get", "explain", "networks", "folders"};

const Command& commandNamed(const std::string& name) {
  for (const CommandTable& table : tables())
    if (const Command* command = table.find(name)) return *command;
  throw UsageError("unknown command " + name);
}

std::string usage() {
  constexpr std::size_t column = 42;
  std::string text =
      "usage: sentrelctl [options] COMMAND [ARGUMENT...]\n"
      "\n"
      "Reads and changes the settings file of a device and tells its processes of each change.\n"
      "\n"
      "commands:\n";
  for (const CommandTable& table : tables())
    text += table.help(column);
  text += "--json is for:";
  for (const std::string_view name : withJson)
    text += " " + std::string(name);
  text += "\n\nsettings, each a KEY:\n";
  for (const SettingsKey& key : allSettingsKeys())
    text += programs::helpFor(std::string(key.name), programs::nameOf(key.type), column);
  return text + "\nkinds of item, each a KIND; without one it is an app:\n" + kindsHelp() +
         "\nfeatures, each an ITEM of the kind feature:\n " + featureNames() + "\n";
}

int run(const CommandLine& line) {
  if (line.arguments.empty()) throw UsageError("no command given");
  const std::string& name = line.arguments.front();
  const Command& command = commandNamed(name);
  const Arguments arguments(line.arguments.begin() + 1, line.arguments.end());
  if (!command.takes(arguments.size())) throw UsageError("expected " + command.call());
  if (line.json && std::ranges::find(withJson, name) == std::end(withJson))
    throw UsageError(name + " does not print JSON");
  bool changesFile = false;
  if (checkCommands().find(name)) return command.run({line, changesFile}, arguments);

  const auto address = bus::findBus({line.root(), line.bus});
  RealProcess self("sentrelctl", "com.apple.Preferences", line.root(), address.value_or(""));
  const auto code = command.run({line, changesFile}, arguments);
  self.connection().catchUp();
  if (changesFile && code == programs::exitDone && address && !self.connection().isConnected())
    throw programs::ProgramError(
        "the change is made, but the running processes could not be told of it: nobody answers "
        "at " +
        *address);
  return code;
}

}  // namespace
}  // namespace sentrel::sentrelctl

int main(int argc, char** argv) {
  using namespace sentrel;
  return programs::runProgram({.name = "sentrelctl",
                               .usage = sentrelctl::usage(),
                               .body = sentrelctl::run,
                               .hasJson = true},
                              argc, argv);
}
