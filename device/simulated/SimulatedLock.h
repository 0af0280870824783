#pragma once

#include <functional>
#include <memory>
#include <string>

#include "device/simulated/Journal.h"
#include "sentrel/platform/LockScreen.h"
#include "sentrel/platform/ManagedConfiguration.h"

namespace sentrel::simulated {

/// The device's own lock and the passcode that opens it.
class SimulatedLock {
 public:
  explicit SimulatedLock(std::shared_ptr<Journal> journal) : journal_(std::move(journal)) {}

  void setPasscodeSet(bool value) noexcept { isPasscodeSet_ = value; }
  bool isPasscodeSet() const noexcept { return isPasscodeSet_; }

  void setLocked(bool value);
  bool isLocked() const noexcept { return isLocked_; }

  /// Is called each time that an unlocked device is locked, by whomever.
  void setHandler(std::function<void()> locked) { locked_ = std::move(locked); }

  void note(std::string action) { journal_->record(std::move(action)); }

 private:
  std::shared_ptr<Journal> journal_;
  bool isPasscodeSet_ = true;
  bool isLocked_ = false;
  std::function<void()> locked_;
};

using SharedLock = std::shared_ptr<SimulatedLock>;

/// The lock-screen manager with every operation of every system.
std::shared_ptr<SBLockScreenManager> makeLockScreenManager(const SharedLock& lock);
std::shared_ptr<MCPasscodeManager> makePasscodeManager(const SharedLock& lock);
std::shared_ptr<MCProfileConnection> makeProfileConnection(const SharedLock& lock);

}  // namespace sentrel::simulated
