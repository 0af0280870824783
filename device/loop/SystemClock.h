#pragma once

#include "sentrel/platform/Clock.h"

namespace sentrel::loop {

/// The machine's own wall clock.
class SystemClock final : public Clock {
 public:
  WallTime now() const override { return std::chrono::system_clock::now(); }
};

}  // namespace sentrel::loop
