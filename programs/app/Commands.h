#pragma once

#include <functional>
#include <string>

#include "programs/common/ExitCode.h"
#include "programs/common/Words.h"

namespace sentrel::programs {

/// What a command came to: one line, and how a program ends that was started for it alone.
struct Answer {
  std::string text;
  ExitCode code = exitDone;
};

using Reply = std::function<void(const Answer&)>;

/// The commands of an application's process, for its usage text.
std::string appCommandsHelp();

/// Obeys COMMAND [ITEM] as the application `ownIdentifier`. `reply` is called once: now, or, for
/// what waits for the owner, when it has ended. Throws UsageError for anything else.
void obey(const Words& words, const std::string& ownIdentifier, const Reply& reply);

}  // namespace sentrel::programs
