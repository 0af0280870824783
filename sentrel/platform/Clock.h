#pragma once

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Seconds.h"

namespace sentrel {

/// What the time is.
class SENTREL_API Clock {
 public:
  virtual ~Clock() = default;

  /// On the device's wall clock, which may be set back or forward while the system runs.
  virtual WallTime now() const = 0;

  /// On a clock that only goes forward, as fast as the delays of the main queue pass.
  virtual SteadyTime steadyNow() const = 0;
};

}  // namespace sentrel
