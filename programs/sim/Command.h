#pragma once

#include <functional>
#include <span>
#include <string>

#include "programs/sim/Phone.h"
#include "programs/sim/Row.h"

namespace sentrel::sim {

using Action = std::function<void(Phone& phone)>;
using Command = Row<Action>;

// The commands, a table a subject.
std::span<const Command> requestCommands();
std::span<const Command> userCommands();
std::span<const Command> deviceCommands();
std::span<const Command> settingsCommands();

/// What an expectation found.
struct Verdict {
  bool isMet;
  /// What there is instead.
  std::string seen;
};

using Check = std::function<Verdict(Phone& phone)>;
using Expectation = Row<Check>;

/// What may follow "expect", or "expect no".
std::span<const Expectation> expectations();

/// Throws UsageError for an application that the phone does not have.
void requireInstalled(Phone& phone, const std::string& bundleIdentifier);

}  // namespace sentrel::sim
