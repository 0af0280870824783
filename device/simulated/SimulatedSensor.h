#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/simulated/Journal.h"
#include "device/simulated/ObserverList.h"
#include "device/simulated/VirtualTimeline.h"
#include "sentrel/platform/Biometrics.h"
#include "sentrel/platform/LocalAuthentication.h"
#include "sentrel/platform/PresenceDetection.h"

namespace sentrel::simulated {

/// The biometric sensor of a device, and who holds it.
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

  /// Why no presence detection can be made, or can be started.
  std::optional<PlatformError> presenceCreationError;
  std::optional<PlatformError> presenceStartError;

  /// Takes the sensor in somebody's name.
  Assertion hold(std::int64_t mode, const std::string& reason);
  void release(const Assertion& assertion);

  /// Every assertion that is held, in the order in which they were taken.
  const std::vector<Assertion>& assertions() const noexcept { return assertions_; }
  std::vector<std::string> reasons() const;

  BiometryType biometryType() const;
  void note(std::string action) { journal_->record(std::move(action)); }
  const std::shared_ptr<Journal>& journal() const noexcept { return journal_; }

 private:
  std::shared_ptr<Journal> journal_;
  std::vector<Assertion> assertions_;
};

using SharedSensor = std::shared_ptr<SimulatedSensor>;

/// One process's interface object, with the operations that systems of `version` answer.
std::shared_ptr<BiometricInterface> makeBiometricInterface(const SharedSensor& sensor, int version);

/// One process's resource, whose interface is `interface`.
class SimulatedBiometricResource final : public SBUIBiometricResource {
 public:
  SimulatedBiometricResource(SharedSensor sensor, std::shared_ptr<BiometricInterface> interface)
      : sensor_(std::move(sensor)), interface_(std::move(interface)) {}

  void setInterface(std::shared_ptr<BiometricInterface> interface) {
    interface_ = std::move(interface);
  }

  /// Those that are still alive, in order.
  std::vector<std::shared_ptr<BiometricObserver>> observers() const { return observers_.alive(); }

  std::shared_ptr<BiometricInterface> _biometricKitInterface() override { return interface_; }
  void addObserver(const std::shared_ptr<BiometricObserver>& observer) override {
    observers_.add(observer);
  }
  void removeObserver(const std::shared_ptr<BiometricObserver>& observer) override {
    observers_.remove(observer);
  }
  bool isFingerOn() const override { return sensor_->isFingerOn; }
  Assertion acquireMatchingAssertionWithMode(std::int64_t mode, const std::string& reason) override;
  std::vector<Assertion> _matchAssertions() const override { return sensor_->assertions(); }
  void _removeMatchingAssertion(const Assertion& assertion) override;
  void _deactivateAssertion(const Assertion& assertion) override;

 private:
  SharedSensor sensor_;
  std::shared_ptr<BiometricInterface> interface_;
  ObserverList observers_;
};

std::shared_ptr<SBUIBiometricEventMonitor> makeBiometricEventMonitor(const SharedSensor& sensor);
std::shared_ptr<BiometricKitManager> makeBiometricKitManager(const SharedSensor& sensor);
std::shared_ptr<BKUserProtectedConfiguration> makeProtectedConfiguration();
std::shared_ptr<BKDeviceManager> makeDeviceManager(const SharedSensor& sensor);
std::shared_ptr<LocalAuthentication> makeLocalAuthentication(
    const SharedSensor& sensor, const std::shared_ptr<VirtualTimeline>& timeline);

}  // namespace sentrel::simulated
