#pragma once

#include "sentrel/platform/Clock.h"

namespace sentrel::bus {

/// The machine's own wall clock.
class SystemClock final : public Clock {
 public:
  WallTime now() const override { return std::chrono::system_clock::now(); }
};

}  // namespace sentrel::bus
