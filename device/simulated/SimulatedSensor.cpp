#include "device/simulated/SimulatedSensor.h"

#include <algorithm>
#include <utility>

#include "sentrel/Process.h"

namespace sentrel::simulated {
namespace {

using Observer = std::shared_ptr<BiometricObserver>;

constexpr BiometricEvent fingerLifted = 0;

class HeldAssertion final : public BiometricMatchAssertion {
 public:
  HeldAssertion(std::shared_ptr<Journal> journal, std::string reason)
      : journal_(std::move(journal)), reason_(std::move(reason)) {}

  const std::string& reason() const override { return reason_; }
  void invalidate() override { journal_->record("invalidate " + reason_); }

 private:
  std::shared_ptr<Journal> journal_;
  std::string reason_;
};

class PresenceDetection final : public PresenceDetectOperation {
 public:
  explicit PresenceDetection(SharedSensor sensor) : sensor_(std::move(sensor)) {}

  void setDelegate(const Observer& delegate) override { delegate_ = delegate; }

  bool startWithError(std::optional<PlatformError>& error) override {
    const auto delegate = delegate_.lock();
    sensor_->note("detect presence for " + (delegate ? delegate->description() : "nobody"));
    error = sensor_->presenceStartError;
    return !error;
  }

  void cancel() override { sensor_->note("stop detecting presence"); }

 private:
  SharedSensor sensor_;
  std::weak_ptr<BiometricObserver> delegate_;
};

class PearlDevice final : public BKDevice {
 public:
  explicit PearlDevice(SharedSensor sensor) : sensor_(std::move(sensor)) {}

  std::shared_ptr<PresenceDetectOperation> createPresenceDetectOperationWithError(
      std::optional<PlatformError>& error) override {
    error = sensor_->presenceCreationError;
    return error ? nullptr : std::make_shared<PresenceDetection>(sensor_);
  }

 private:
  SharedSensor sensor_;
};

class DeviceManager final : public BKDeviceManager {
 public:
  explicit DeviceManager(SharedSensor sensor) : sensor_(std::move(sensor)) {}

  std::vector<std::string> availableDevices() const override {
    if (!sensor_->isPearlIDCapable) return {};
    return {"pearl"};
  }

  std::shared_ptr<BKDevice> deviceWithDescriptor(const std::string&,
                                                 std::optional<PlatformError>&) override {
    return std::make_shared<PearlDevice>(sensor_);
  }

 private:
  SharedSensor sensor_;
};

class Context final : public LAContext {
 public:
  Context(SharedSensor sensor, std::weak_ptr<MainQueue> mainQueue)
      : sensor_(std::move(sensor)), mainQueue_(std::move(mainQueue)) {}

  bool canEvaluateBiometricPolicy() override {
    return sensor_->isEnrolled && (sensor_->isTouchIDCapable || sensor_->isPearlIDCapable);
  }
  BiometryType biometryType() const override { return sensor_->biometryType(); }
  void setLocalizedFallbackTitle(const std::string& title) override { fallbackTitle_ = title; }

  void evaluateBiometricPolicy(const std::string& localizedReason, Reply reply) override {
    sensor_->note("ask the owner: " + localizedReason + ", fallback \"" +
                  fallbackTitle_.value_or("Enter Password") + "\"");
    sensor_->askOwner(mainQueue_, std::move(reply));
  }

 private:
  SharedSensor sensor_;
  std::weak_ptr<MainQueue> mainQueue_;
  std::optional<std::string> fallbackTitle_;
};

class Authentication final : public LocalAuthentication {
 public:
  Authentication(SharedSensor sensor, std::weak_ptr<MainQueue> mainQueue)
      : sensor_(std::move(sensor)), mainQueue_(std::move(mainQueue)) {}

  std::shared_ptr<LAContext> makeContext() override {
    return std::make_shared<Context>(sensor_, mainQueue_);
  }

 private:
  SharedSensor sensor_;
  std::weak_ptr<MainQueue> mainQueue_;
};

}  // namespace

SimulatedSensor::Assertion SimulatedSensor::hold(std::int64_t mode, const std::string& reason) {
  note("hold the sensor in mode " + std::to_string(mode) + ": " + reason);
  return assertions_.emplace_back(std::make_shared<HeldAssertion>(journal_, reason));
}

void SimulatedSensor::release(const Assertion& assertion) {
  std::erase(assertions_, assertion);
}

std::vector<std::string> SimulatedSensor::reasons() const {
  std::vector<std::string> reasons;
  for (const Assertion& assertion : assertions_)
    reasons.push_back(assertion->reason());
  return reasons;
}

void SimulatedSensor::addListener(const std::shared_ptr<SensorListener>& listener) {
  std::erase_if(listeners_, [](const Listening& entry) { return entry.listener.expired(); });
  const bool isKnown = std::any_of(
      listeners_.begin(), listeners_.end(),
      [&listener](const Listening& entry) { return entry.listener.lock() == listener; });
  if (!isKnown) listeners_.push_back({listener, ProcessContext::current().platform().mainQueue});
}

void SimulatedSensor::emit(BiometricEvent event) {
  if (isTouchIDCapable) isFingerOn = event != fingerLifted;
  for (const Listening& entry : listeners_) {
    const auto queue = entry.mainQueue.lock();
    if (!queue) continue;
    queue->async([weak = entry.listener, event] {
      if (const auto listener = weak.lock()) listener->sensed(event);
    });
  }
}

void SimulatedSensor::askOwner(const std::weak_ptr<MainQueue>& mainQueue, LAContext::Reply reply) {
  asked_.emplace_back(mainQueue, std::move(reply));
  if (!keepsOwnerWaiting) answerOwner();
}

bool SimulatedSensor::answerOwner() {
  const auto asked = std::exchange(asked_, {});
  for (const auto& [mainQueue, reply] : asked)
    if (const auto queue = mainQueue.lock())
      queue->async([error = evaluationError, reply = reply] { reply(!error, error); });
  return !asked.empty();
}

BiometryType SimulatedSensor::biometryType() const {
  if (reportedType) return *reportedType;
  if (isPearlIDCapable) return BiometryType::faceID;
  return isTouchIDCapable ? BiometryType::touchID : BiometryType::none;
}

std::shared_ptr<BKDeviceManager> makeDeviceManager(const SharedSensor& sensor) {
  return std::make_shared<DeviceManager>(sensor);
}

std::shared_ptr<LocalAuthentication> makeLocalAuthentication(
    const SharedSensor& sensor, const std::weak_ptr<MainQueue>& mainQueue) {
  return std::make_shared<Authentication>(sensor, mainQueue);
}

}  // namespace sentrel::simulated
