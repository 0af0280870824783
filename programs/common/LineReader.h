#pragma once

#include <functional>
#include <string>

#include "device/loop/RunLoop.h"

namespace sentrel::programs {

using LineHandler = std::function<void(const std::string& line)>;

/// Runs the loop until it is stopped, and hands the lines of standard input to a handler on its
/// thread, and their end, if it is asked for, to `atEnd`, behind what the handler posted to the
/// loop. The last line needs no newline; a carriage return at a line's end belongs to the end. A
/// line over 64 KiB is ignored as a whole, and standard error says so: its pieces could be commands
/// that nobody gave.
void runOnInput(loop::RunLoop& loop, LineHandler handler, std::function<void()> atEnd = {});

}  // namespace sentrel::programs
