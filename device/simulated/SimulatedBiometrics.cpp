#include "device/simulated/SimulatedBiometrics.h"

#include <utility>

namespace sentrel::simulated {
namespace {

using Observer = std::shared_ptr<BiometricObserver>;

/// The delegate half of an interface, kept weakly as the platform does.
template <class Base>
class WithDelegate : public Base, public SensorListener {
 public:
  explicit WithDelegate(SharedSensor sensor) : sensor_(std::move(sensor)) {}

  Observer delegate() const override { return delegate_.lock(); }
  void setDelegate(const Observer& delegate) override {
    delegate_ = delegate;
    sensor_->addListener(shared_from_this());
  }

 protected:
  const SharedSensor sensor_;

 private:
  std::weak_ptr<BiometricObserver> delegate_;
};

class Interface final : public WithDelegate<BiometricInterface> {
 public:
  /// When its delegate is told of events.
  enum class Tells { always, whileMatching };

  Interface(SharedSensor sensor, Tells tells) : WithDelegate(std::move(sensor)), tells_(tells) {}

  void setMatching(bool value) { isMatching_ = value; }

  void sensed(BiometricEvent event) override {
    if (tells_ == Tells::whileMatching && !isMatching_) return;
    if (const Observer told = delegate())
      told->biometricKitInterfaceHandleEvent(
          std::static_pointer_cast<Interface>(shared_from_this()), event);
  }

 private:
  Tells tells_;
  bool isMatching_ = false;
};

class EventMonitor final : public WithDelegate<SBUIBiometricEventMonitor> {
 public:
  using WithDelegate::WithDelegate;

  std::vector<Observer> observers() const override { return observers_.alive(); }
  void addObserver(const Observer& observer) override {
    observers_.add(observer);
    sensor_->addListener(shared_from_this());
  }
  void removeObserver(const Observer& observer) override { observers_.remove(observer); }

  bool isMatchingEnabled() const override { return isMatchingEnabled_; }
  void _setMatchingEnabled(bool value) override {
    isMatchingEnabled_ = value;
    sensor_->note(value ? "_setMatchingEnabled YES" : "_setMatchingEnabled NO");
  }
  void _startMatching() override { sensor_->note("_startMatching"); }

  void sensed(BiometricEvent event) override {
    const auto self = std::static_pointer_cast<EventMonitor>(shared_from_this());
    observers_.tell([&](BiometricObserver& observer) {
      observer.biometricEventMonitorHandleBiometricEvent(self, event);
    });
  }

 private:
  ObserverList observers_;
  bool isMatchingEnabled_ = false;
};

class KitManager final : public BiometricKitManager {
 public:
  explicit KitManager(std::shared_ptr<BiometricInterface> ownInterface)
      : ownInterface_(std::move(ownInterface)), delegate_(ownInterface_) {}

  std::shared_ptr<BiometricInterface> delegate() const override { return delegate_.lock(); }
  void setDelegate(const std::shared_ptr<BiometricInterface>& delegate) override {
    delegate_ = delegate;
  }

 private:
  std::shared_ptr<BiometricInterface> ownInterface_;
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

std::shared_ptr<Interface> makeInterface(const SharedSensor& sensor, int version,
                                         Interface::Tells tells) {
  auto interface = std::make_shared<Interface>(sensor, tells);
  const auto setMatching = [weak = std::weak_ptr(interface)](bool value) {
    if (const auto alive = weak.lock()) alive->setMatching(value);
  };
  interface->isTouchIDCapable = [sensor] { return sensor->isTouchIDCapable; };
  interface->isPearlIDCapable = [sensor] { return sensor->isPearlIDCapable; };
  interface->cancel = [sensor, setMatching] {
    sensor->note("cancel matching");
    setMatching(false);
  };
  interface->detectFingerWithOptions = [sensor] { sensor->note("detect the finger"); };
  interface->answersMatchOperation = version >= 11;
  if (version < 11)
    interface->matchWithMode = [sensor, setMatching](std::int64_t mode) {
      sensor->note("match in mode " + std::to_string(mode));
      setMatching(true);
    };
  return interface;
}

std::shared_ptr<BiometricKitManager> makeManager(const SharedSensor& sensor,
                                                 std::shared_ptr<BiometricInterface> interface) {
  auto manager = std::make_shared<KitManager>(std::move(interface));
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

}  // namespace

void SimulatedBiometricResource::addObserver(const Observer& observer) {
  observers_.add(observer);
  sensor_->addListener(shared_from_this());
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

void SimulatedBiometricResource::sensed(BiometricEvent event) {
  observers_.tell([&](BiometricObserver& observer) {
    observer.biometricKitInterfaceObserveEvent(interface_, event);
  });
}

std::shared_ptr<BiometricInterface> makeBiometricInterface(const SharedSensor& sensor,
                                                           int version) {
  return makeInterface(sensor, version, Interface::Tells::always);
}

std::shared_ptr<SBUIBiometricEventMonitor> makeBiometricEventMonitor(const SharedSensor& sensor) {
  return std::make_shared<EventMonitor>(sensor);
}

std::shared_ptr<BiometricKitManager> makeBiometricKitManager(const SharedSensor& sensor) {
  return makeManager(sensor, nullptr);
}

std::shared_ptr<BiometricKitManager> makeApplicationBiometricKitManager(const SharedSensor& sensor,
                                                                        int version) {
  return makeManager(sensor, makeInterface(sensor, version, Interface::Tells::whileMatching));
}

std::shared_ptr<BKUserProtectedConfiguration> makeProtectedConfiguration() {
  return std::make_shared<ProtectedConfiguration>();
}

}  // namespace sentrel::simulated
