#pragma once

#include "device/storage/DeviceRoot.h"
#include "programs/common/CommandLine.h"
#include "programs/common/CommandTable.h"
#include "programs/common/ExitCode.h"
#include "programs/common/Words.h"

namespace sentrel::sentrelctl {

using Arguments = programs::Words;

/// What a command works on.
struct Context {
  /// The device whose files it changes. Throws as line.root() does.
  storage::DeviceRoot root() const { return storage::DeviceRoot(line.root()); }

  const programs::CommandLine& line;
  /// Set by a command that sets about changing a file, of which other processes are to know.
  bool& changesFile;
};

using Signature = programs::ExitCode(const Context& context, const Arguments& arguments);
using Command = programs::Command<Signature>;
using CommandTable = programs::CommandTable<Signature>;

/// The commands, a table a subject. The check looks at a file alone: no process is made for it.
CommandTable checkCommands();
CommandTable storeCommands();
CommandTable listCommands();
CommandTable explainCommands();
CommandTable passcodeCommands();
CommandTable networkCommands();
CommandTable folderCommands();

}  // namespace sentrel::sentrelctl
