#pragma once

#include "device/storage/DeviceRoot.h"
#include "programs/common/CommandTable.h"
#include "programs/common/ExitCode.h"
#include "programs/common/Words.h"

namespace sentrel::sentrelctl {

using Arguments = programs::Words;

/// What a command works on: the device whose files it changes.
struct Context {
  storage::DeviceRoot root;
};

using Signature = programs::ExitCode(const Context& context, const Arguments& arguments);
using Command = programs::Command<Signature>;
using CommandTable = programs::CommandTable<Signature>;

/// The commands, a table a subject.
CommandTable storeCommands();
CommandTable listCommands();
CommandTable checkCommands();
CommandTable explainCommands();
CommandTable passcodeCommands();
CommandTable networkCommands();
CommandTable folderCommands();

}  // namespace sentrel::sentrelctl
