#pragma once

#include <functional>
#include <string>

#include "device/loop/RunLoop.h"

namespace sentrel::programs {

enum class AtEndOfInput { stop, goOn };

using LineHandler = std::function<void(const std::string& line)>;

/// Runs the loop until it is stopped, and hands the lines of standard input to a handler on its
/// thread. The end of the input stops it if asked to, behind what the handler posted to it. The
/// last line needs no newline. A line over 64 KiB is ignored as a whole, and standard error says
/// so: its pieces could be commands that nobody gave.
void runOnInput(loop::RunLoop& loop, AtEndOfInput atEnd, LineHandler handler);

}  // namespace sentrel::programs
