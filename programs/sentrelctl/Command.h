#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "device/storage/DeviceRoot.h"
#include "programs/common/ExitCode.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel::sentrelctl {

using Arguments = std::vector<std::string>;

/// What a command works on: the device whose files it changes.
struct Context {
  storage::DeviceRoot root;
};

/// One command of sentrelctl.
struct Command {
  const char* name;
  const char* argumentsHelp;
  const char* help;
  std::size_t fewest;
  std::size_t most;
  programs::ExitCode (*run)(const Context& context, const Arguments& arguments);
};

/// The commands, a table a subject.
std::span<const Command> storeCommands();
std::span<const Command> listCommands();
std::span<const Command> checkCommands();
std::span<const Command> explainCommands();
std::span<const Command> passcodeCommands();
std::span<const Command> networkCommands();
std::span<const Command> folderCommands();

}  // namespace sentrel::sentrelctl
