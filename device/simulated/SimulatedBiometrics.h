#pragma once

#include <memory>
#include <string>
#include <vector>

#include "device/simulated/ObserverList.h"
#include "device/simulated/SimulatedSensor.h"
#include "sentrel/platform/Biometrics.h"

namespace sentrel::simulated {

// The objects by which a process reaches the sensor. Each begins to hear of events when somebody
// first wants them of it, inside the process in which that happens, and tells only those who want
// them at the moment of telling.

/// The interface of the home-screen process, with the operations that systems of `version` answer.
/// Its delegate is told of every event.
std::shared_ptr<BiometricInterface> makeBiometricInterface(const SharedSensor& sensor, int version);

/// The home-screen process's resource, whose interface is `interface`. Its observers are told of
/// every event.
class SimulatedBiometricResource final : public SBUIBiometricResource, public SensorListener {
 public:
  SimulatedBiometricResource(SharedSensor sensor, std::shared_ptr<BiometricInterface> interface)
      : sensor_(std::move(sensor)), interface_(std::move(interface)) {}

  void setInterface(std::shared_ptr<BiometricInterface> interface) {
    interface_ = std::move(interface);
  }

  /// Those that are still alive, in order.
  std::vector<std::shared_ptr<BiometricObserver>> observers() const { return observers_.alive(); }

  std::shared_ptr<BiometricInterface> _biometricKitInterface() override { return interface_; }
  void addObserver(const std::shared_ptr<BiometricObserver>& observer) override;
  void removeObserver(const std::shared_ptr<BiometricObserver>& observer) override {
    observers_.remove(observer);
  }
  bool isFingerOn() const override { return sensor_->isFingerOn; }
  Assertion acquireMatchingAssertionWithMode(std::int64_t mode, const std::string& reason) override;
  std::vector<Assertion> _matchAssertions() const override { return sensor_->assertions(); }
  void _removeMatchingAssertion(const Assertion& assertion) override;
  void _deactivateAssertion(const Assertion& assertion) override;

  void sensed(BiometricEvent event) override;

 private:
  SharedSensor sensor_;
  std::shared_ptr<BiometricInterface> interface_;
  ObserverList observers_;
};

/// Its observers are told of every event.
std::shared_ptr<SBUIBiometricEventMonitor> makeBiometricEventMonitor(const SharedSensor& sensor);

/// The home-screen process's manager: at first it has no delegate.
std::shared_ptr<BiometricKitManager> makeBiometricKitManager(const SharedSensor& sensor);

/// An application's manager. It owns the interface that is its first delegate and answers what
/// systems of `version` answer; its delegate is told of events from a match to a cancel.
std::shared_ptr<BiometricKitManager> makeApplicationBiometricKitManager(const SharedSensor& sensor,
                                                                        int version);

std::shared_ptr<BKUserProtectedConfiguration> makeProtectedConfiguration();

}  // namespace sentrel::simulated
