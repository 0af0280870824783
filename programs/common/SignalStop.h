#pragma once

#include "device/loop/RunLoop.h"

namespace sentrel::programs {

/// Has an interrupt or a request to terminate stop `loop`, which lives until the program ends.
void stopOnSignals(loop::RunLoop& loop);

}  // namespace sentrel::programs
