#pragma once

#include <string>

#include "device/simulated/SimulatedWatch.h"

namespace sentrel::programs {

/// Does what one line of input says of the watch, and returns the line to print. Throws UsageError
/// where it makes no sense; the watch is then as it was.
std::string obeyWatchCommand(simulated::SimulatedWatch& watch, const std::string& line);

/// The lines that obeyWatchCommand knows, for people.
std::string watchCommandsHelp();

}  // namespace sentrel::programs
