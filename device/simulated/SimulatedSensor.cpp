#include "device/simulated/SimulatedSensor.h"

#include <algorithm>

namespace sentrel::simulated {
namespace {

using Observer = std::shared_ptr<BiometricObserver>;

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

/// The delegate half of an interface, kept weakly as the platform does.
template <class Base>
class WithDelegate : public Base {
 public:
  Observer delegate() const override { return delegate_.lock(); }
  void setDelegate(const Observer& delegate) override { delegate_ = delegate; }

 private:
  std::weak_ptr<BiometricObserver> delegate_;
};

class Interface final : public WithDelegate<BiometricInterface> {};

class EventMonitor final : public WithDelegate<SBUIBiometricEventMonitor> {
 public:
  explicit EventMonitor(SharedSensor sensor) : sensor_(std::move(sensor)) {}

  std::vector<Observer> observers() const override { return observers_.alive(); }
  void addObserver(const Observer& observer) override { observers_.add(observer); }
  void removeObserver(const Observer& observer) override { observers_.remove(observer); }

  bool isMatchingEnabled() const override { return isMatchingEnabled_; }
  void _setMatchingEnabled(bool value) override {
    isMatchingEnabled_ = value;
    sensor_->note(value ? "_setMatchingEnabled YES" : "_setMatchingEnabled NO");
  }
  void _startMatching() override { sensor_->note("_startMatching"); }

 private:
  SharedSensor sensor_;
  ObserverList observers_;
  bool isMatchingEnabled_ = false;
};

class KitManager final : public BiometricKitManager {
 public:
  std::shared_ptr<BiometricInterface> delegate() const override { return delegate_.lock(); }
  void setDelegate(const std::shared_ptr<BiometricInterface>& delegate) override {
    delegate_ = delegate;
  }

 private:
  std::weak_ptr<BiometricInterface> delegate_;
};

constexpr std::string_view effectiveUnlockKey = "BKUserCfgEffectiveTouchIDUnlockEnabled";
constexpr std::string_view loginKey = "BKUserCfgTouchIDLoginEnabled";

class ProtectedConfiguration final : public BKUserProtectedConfiguration {
 public:
  bool unlockEnabled(const std::optional<PropertyList::Dictionary>& configuration) const override {
    const PropertyList* value = configuration ? find(*configuration, effectiveUnlockKey) : nullptr;
    return value && value->boolValue();
  }
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
  Context(SharedSensor sensor, std::shared_ptr<VirtualTimeline> timeline)
      : sensor_(std::move(sensor)), timeline_(std::move(timeline)) {}

  bool canEvaluateBiometricPolicy() override {
    return sensor_->isEnrolled && (sensor_->isTouchIDCapable || sensor_->isPearlIDCapable);
  }
  BiometryType biometryType() const override { return sensor_->biometryType(); }
  void setLocalizedFallbackTitle(const std::string& title) override { fallbackTitle_ = title; }

  void evaluateBiometricPolicy(const std::string& localizedReason, Reply reply) override {
    sensor_->note("ask the owner: " + localizedReason + ", fallback \"" +
                  fallbackTitle_.value_or("Enter Password") + "\"");
    timeline_->after(Seconds(0), [sensor = sensor_, reply = std::move(reply)] {
      reply(!sensor->evaluationError, sensor->evaluationError);
    });
  }

 private:
  SharedSensor sensor_;
  std::shared_ptr<VirtualTimeline> timeline_;
  std::optional<std::string> fallbackTitle_;
};

class Authentication final : public LocalAuthentication {
 public:
  Authentication(SharedSensor sensor, std::shared_ptr<VirtualTimeline> timeline)
      : sensor_(std::move(sensor)), timeline_(std::move(timeline)) {}

  std::shared_ptr<LAContext> makeContext() override {
    return std::make_shared<Context>(sensor_, timeline_);
  }

 private:
  SharedSensor sensor_;
  std::shared_ptr<VirtualTimeline> timeline_;
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

BiometryType SimulatedSensor::biometryType() const {
  if (reportedType) return *reportedType;
  if (isPearlIDCapable) return BiometryType::faceID;
  return isTouchIDCapable ? BiometryType::touchID : BiometryType::none;
}

SimulatedSensor::Assertion SimulatedBiometricResource::acquireMatchingAssertionWithMode(
    std::int64_t mode, const std::string& reason) {
  return sensor_->hold(mode, reason);
}

void SimulatedBiometricResource::_removeMatchingAssertion(const Assertion& assertion) {
  sensor_->note("remove " + assertion->reason());
  sensor_->release(assertion);
}

void SimulatedBiometricResource::_deactivateAssertion(const Assertion& assertion) {
  sensor_->note("deactivate " + assertion->reason());
}

std::shared_ptr<BiometricInterface> makeBiometricInterface(const SharedSensor& sensor,
                                                           int version) {
  auto interface = std::make_shared<Interface>();
  interface->isTouchIDCapable = [sensor] { return sensor->isTouchIDCapable; };
  interface->isPearlIDCapable = [sensor] { return sensor->isPearlIDCapable; };
  interface->cancel = [sensor] { sensor->note("cancel matching"); };
  interface->detectFingerWithOptions = [sensor] { sensor->note("detect the finger"); };
  interface->answersMatchOperation = version >= 11;
  if (version < 11)
    interface->matchWithMode = [sensor](std::int64_t mode) {
      sensor->note("match in mode " + std::to_string(mode));
    };
  return interface;
}

std::shared_ptr<SBUIBiometricEventMonitor> makeBiometricEventMonitor(const SharedSensor& sensor) {
  return std::make_shared<EventMonitor>(sensor);
}

std::shared_ptr<BiometricKitManager> makeBiometricKitManager(const SharedSensor& sensor) {
  auto manager = std::make_shared<KitManager>();
  manager->isTouchIDCapable = [sensor] { return sensor->isTouchIDCapable; };
  manager->getSensorInfo = [sensor]() -> std::optional<PropertyList::Dictionary> {
    if (sensor->biometryType() == BiometryType::none) return std::nullopt;
    return PropertyList::Dictionary();
  };
  manager->getProtectedConfiguration = [sensor]() -> std::optional<PropertyList::Dictionary> {
    PropertyList::Dictionary configuration;
    configuration.emplace(effectiveUnlockKey, sensor->isUnlockEnabled);
    configuration.emplace(loginKey, sensor->isUnlockEnabled);
    return configuration;
  };
  return manager;
}

std::shared_ptr<BKUserProtectedConfiguration> makeProtectedConfiguration() {
  return std::make_shared<ProtectedConfiguration>();
}

std::shared_ptr<BKDeviceManager> makeDeviceManager(const SharedSensor& sensor) {
  return std::make_shared<DeviceManager>(sensor);
}

std::shared_ptr<LocalAuthentication> makeLocalAuthentication(
    const SharedSensor& sensor, const std::shared_ptr<VirtualTimeline>& timeline) {
  return std::make_shared<Authentication>(sensor, timeline);
}

}  // namespace sentrel::simulated
