#include "device/simulated/SimulatedLock.h"

#include <utility>

namespace sentrel::simulated {
namespace {

std::string yesOrNo(bool value) {
  return value ? "YES" : "NO";
}

/// A relock operation that goes by `name`.
std::function<void(bool, bool)> relockAs(const SharedLock& lock, std::string name) {
  return [lock, name = std::move(name)](bool source, bool afterCall) {
    lock->note(name + " " + yesOrNo(source) + " " + yesOrNo(afterCall));
    lock->setLocked(/*value=*/true);
  };
}

class ProfileConnection final : public MCProfileConnection {
 public:
  explicit ProfileConnection(SharedLock lock) : lock_(std::move(lock)) {}
  bool isPasscodeSet() const override { return lock_->isPasscodeSet(); }

 private:
  SharedLock lock_;
};

}  // namespace

void SimulatedLock::setLocked(bool value) {
  const bool wasLocked = std::exchange(isLocked_, value);
  if (value && !wasLocked && locked_) locked_();
}

std::shared_ptr<SBLockScreenManager> makeLockScreenManager(const SharedLock& lock) {
  auto manager = std::make_shared<SBLockScreenManager>();
  manager->isUILocked = [lock] { return lock->isLocked(); };
  manager->_relockUIForButtonPress = relockAs(lock, "_relockUIForButtonPress");
  manager->_relockUIForButtonlikeSource = relockAs(lock, "_relockUIForButtonlikeSource");
  manager->lockUIFromSource = [lock](int source) {
    lock->note("lockUIFromSource " + std::to_string(source));
    lock->setLocked(/*value=*/true);
  };
  manager->homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown = [lock](bool shown) {
    lock->note("homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown " + yesOrNo(shown));
  };
  return manager;
}

std::shared_ptr<MCPasscodeManager> makePasscodeManager(const SharedLock& lock) {
  auto manager = std::make_shared<MCPasscodeManager>();
  manager->isPasscodeSet = [lock] { return lock->isPasscodeSet(); };
  manager->isDeviceUnlocked = [lock] { return !lock->isLocked(); };
  manager->lockDevice = [lock] {
    lock->note("lockDevice");
    lock->setLocked(/*value=*/true);
  };
  return manager;
}

std::shared_ptr<MCProfileConnection> makeProfileConnection(const SharedLock& lock) {
  return std::make_shared<ProfileConnection>(lock);
}

}  // namespace sentrel::simulated
