#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/simulated/Journal.h"
#include "sentrel/platform/Biometrics.h"
#include "sentrel/platform/LocalAuthentication.h"
#include "sentrel/platform/MainQueue.h"
#include "sentrel/platform/PresenceDetection.h"

namespace sentrel::simulated {

/// An object of some process that hears of what the sensor senses.
class SensorListener : public std::enable_shared_from_this<SensorListener> {
 public:
  virtual ~SensorListener() = default;
  virtual void sensed(BiometricEvent event) = 0;
};

/// The biometric sensor of a device, who holds it and who hears of it.
class SimulatedSensor {
 public:
  using Assertion = std::shared_ptr<BiometricMatchAssertion>;

  explicit SimulatedSensor(std::shared_ptr<Journal> journal) : journal_(std::move(journal)) {}

  // What it is, and what its owner has set up.
  bool isTouchIDCapable = false;
  bool isPearlIDCapable = true;
  bool isEnrolled = true;
  bool isUnlockEnabled = true;
  /// What a context calls the sensor, where that is not what it is capable of.
  std::optional<BiometryType> reportedType;

  bool isFingerOn = false;

  /// How the next evaluation that asks the owner ends; none is a success.
  std::optional<PlatformError> evaluationError;
  /// Whether evaluations end only when the owner answers, and not at once.
  bool keepsOwnerWaiting = false;

  /// Why no presence detection can be made, or can be started.
  std::optional<PlatformError> presenceCreationError;
  std::optional<PlatformError> presenceStartError;

  /// Takes the sensor in somebody's name.
  Assertion hold(std::int64_t mode, const std::string& reason);
  void release(const Assertion& assertion);

  /// Every assertion that is held, in the order in which they were taken.
  const std::vector<Assertion>& assertions() const noexcept { return assertions_; }
  std::vector<std::string> reasons() const;
  bool isHeld() const noexcept { return !assertions_.empty(); }

  /// Senses something, a finger until it is lifted: every listener hears of it, on a later turn of
  /// its process's main queue.
  void emit(BiometricEvent event);

  /// `listener` hears of every event from now on, inside the current process, as long as it lives.
  /// Adding one twice changes nothing.
  void addListener(const std::shared_ptr<SensorListener>& listener);

  /// Asks the owner on behalf of a process: `reply` runs on its main queue.
  void askOwner(const std::weak_ptr<MainQueue>& mainQueue, LAContext::Reply reply);
  /// The owner answers whatever waits for it, as evaluationError says. Whether anything did.
  bool answerOwner();

  BiometryType biometryType() const;
  void note(std::string action) { journal_->record(std::move(action)); }
  const std::shared_ptr<Journal>& journal() const noexcept { return journal_; }

 private:
  struct Listening {
    std::weak_ptr<SensorListener> listener;
    std::weak_ptr<MainQueue> mainQueue;
  };

  std::shared_ptr<Journal> journal_;
  std::vector<Assertion> assertions_;
  std::vector<Listening> listeners_;
  std::vector<std::pair<std::weak_ptr<MainQueue>, LAContext::Reply>> asked_;
};

using SharedSensor = std::shared_ptr<SimulatedSensor>;

std::shared_ptr<BKDeviceManager> makeDeviceManager(const SharedSensor& sensor);

/// The contexts' replies run on the main queue.
std::shared_ptr<LocalAuthentication> makeLocalAuthentication(
    const SharedSensor& sensor, const std::weak_ptr<MainQueue>& mainQueue);

}  // namespace sentrel::simulated
