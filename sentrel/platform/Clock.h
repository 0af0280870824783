#pragma once

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Seconds.h"

namespace sentrel {

/// The device's wall clock. It may be set back or forward while the system runs.
class SENTREL_API Clock {
 public:
  virtual ~Clock() = default;
  virtual WallTime now() const = 0;
};

}  // namespace sentrel
