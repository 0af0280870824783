#pragma once

#include "device/bus/RunLoop.h"

namespace sentrel::programs {

/// Has an interrupt or a request to terminate stop `loop`, which lives until the program ends.
void stopOnSignals(bus::RunLoop& loop);

}  // namespace sentrel::programs
