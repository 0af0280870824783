#pragma once

#include "sentrel/platform/Clock.h"

namespace sentrel::loop {

/// The machine's own clocks; the steady one is the run loop's.
class SystemClock final : public Clock {
 public:
  WallTime now() const override { return std::chrono::system_clock::now(); }
  SteadyTime steadyNow() const override { return std::chrono::steady_clock::now(); }
};

}  // namespace sentrel::loop
