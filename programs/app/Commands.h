#pragma once

#include <functional>
#include <string>

#include "device/loop/RunLoop.h"
#include "programs/common/ExitCode.h"
#include "programs/common/Words.h"

namespace sentrel::programs {

/// What a command came to: one line, and how a program ends that was started for it alone.
struct Answer {
  std::string text;
  ExitCode code = exitDone;
};

using Reply = std::function<void(const Answer&)>;

/// The process that obeys, with the bus that its home screen is on; empty for none.
struct Application {
  std::string identifier;
  loop::RunLoop& loop;
  std::string busAddress;
};

/// The commands of an application's process, for its usage text.
std::string appCommandsHelp();

/// Obeys COMMAND [ITEM] as `self`, which outlives what waits. `reply` is called once: now, or, for
/// what waits for the owner, when it has ended or the home screen is gone. Throws UsageError for
/// anything else.
void obey(const Words& words, const Application& self, const Reply& reply);

}  // namespace sentrel::programs
