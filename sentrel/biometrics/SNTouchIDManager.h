#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "sentrel/platform/BiometricObserver.h"
#include "sentrel/platform/Platform.h"

namespace sentrel {

class Bridge;

/// Has the sensor work for a prompt while one shows. What it takes from the system, the delegate
/// and the observers above all, it puts back afterwards.
///
/// One start more, or one stop, does no harm, whoever calls it. Main thread only, but for
/// sharedManager.
class SENTREL_API SNTouchIDManager final : public BiometricObserver,
                                           public std::enable_shared_from_this<SNTouchIDManager> {
 public:
  /// `interface` is null for an event that came from another process; on old systems it is the
  /// event monitor.
  using EventBlock =
      std::function<void(const std::shared_ptr<BiometricInterface>& interface, BiometricEvent)>;
  using RunningBlock = std::function<void(bool running)>;

  /// The current process's own.
  static std::shared_ptr<SNTouchIDManager> sharedManager();

  /// What sharedManager is made by. `bridge` outlives the manager; `closeOverlay` closes the
  /// overlay window.
  static std::shared_ptr<SNTouchIDManager> makeShared(Bridge& bridge,
                                                      std::function<void()> closeOverlay);

  /// The sensor interface of the running system, or null.
  std::shared_ptr<BiometricInterface> bioMetricInterface();

  /// Takes the sensor. While it is held, being taken or absent nothing is counted; newer systems
  /// then only have the sensor matched again.
  void startManager();

  /// Gives the sensor back and forgets all four blocks, once it is held. Always closes the overlay
  /// window.
  void stopManager();

  bool isRunning() const noexcept { return running_; }
  /// Starts less stops, never below 0.
  std::int64_t counter() const noexcept { return counter_; }

  /// What was displaced at the start; null and empty while stopped. Old systems have their
  /// observers displaced, newer ones the delegate of their interface.
  const std::shared_ptr<BiometricObserver>& oldDelegate() const noexcept { return oldDelegate_; }
  const std::vector<std::shared_ptr<BiometricObserver>>& oldObservers() const noexcept {
    return oldObservers_;
  }
  /// Whether the event monitor was matching before the start, on old systems.
  bool isMatchingEnabled() const noexcept { return matchingEnabled_; }

  // Any of the blocks may be empty.
  void setHandleEventBlock(EventBlock block) { handleEventBlock_ = std::move(block); }
  void setObserveEventBlock(EventBlock block) { observeEventBlock_ = std::move(block); }
  void setManagerStarted(RunningBlock block) { managerStarted_ = std::move(block); }
  void setManagerStopped(RunningBlock block) { managerStopped_ = std::move(block); }

  void biometricKitInterfaceHandleEvent(const std::shared_ptr<BiometricInterface>& interface,
                                        BiometricEvent event) override;
  void biometricKitInterfaceObserveEvent(const std::shared_ptr<BiometricInterface>& interface,
                                         BiometricEvent event) override;
  void biometricEventMonitorHandleBiometricEvent(
      const std::shared_ptr<SBUIBiometricEventMonitor>& monitor, BiometricEvent event) override;
  std::string description() const override;

 private:
  SNTouchIDManager(Bridge& bridge, std::function<void()> closeOverlay);

  /// Newer systems report it between the events that count.
  bool isIgnorable(BiometricEvent event) const;
  void logIgnored(BiometricEvent event) const;

  void loadBiometricKit();
  void matchAgain(const std::shared_ptr<BiometricInterface>& interface);
  bool canStop() const;

  // Newer systems.
  void takeInterface(const std::shared_ptr<BiometricInterface>& interface);
  void giveInterfaceBack();

  // Old systems.
  void takeEventMonitor();
  void giveEventMonitorBack();

  void forgetWhatWasTaken();
  void clearBlocks();

  Bridge& bridge_;
  Platform& platform_;
  const std::function<void()> closeOverlay_;
  bool running_ = false;
  bool starting_ = false;
  bool stopping_ = false;
  std::int64_t counter_ = 0;

  // What was taken from whom. Kept alive, so that it goes back there even when the system has lost
  // it meanwhile.
  std::shared_ptr<BiometricInterface> interface_;
  std::shared_ptr<BiometricObserver> oldDelegate_;
  std::shared_ptr<SBUIBiometricEventMonitor> eventMonitor_;
  std::vector<std::shared_ptr<BiometricObserver>> oldObservers_;
  bool matchingEnabled_ = false;
  std::shared_ptr<BiometricKitManager> biometricKit_;
  std::shared_ptr<BiometricInterface> oldKitDelegate_;

  EventBlock handleEventBlock_;
  EventBlock observeEventBlock_;
  RunningBlock managerStarted_;
  RunningBlock managerStopped_;
};

}  // namespace sentrel
