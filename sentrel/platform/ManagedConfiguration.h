#pragma once

#include <functional>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// The device's own passcode, and the lock that it opens. Each operation may be missing.
class SENTREL_API MCPasscodeManager {
 public:
  virtual ~MCPasscodeManager() = default;

  std::function<bool()> isPasscodeSet;
  std::function<bool()> isDeviceUnlocked;
  std::function<void()> lockDevice;
};

/// The device's managed settings.
class SENTREL_API MCProfileConnection {
 public:
  virtual ~MCProfileConnection() = default;

  virtual bool isPasscodeSet() const = 0;
};

}  // namespace sentrel
