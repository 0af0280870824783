#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sentrel/platform/BiometricObserver.h"
#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// The object that drives the sensor. It tells its one delegate of every event. Main thread only,
/// as everything in this header.
class SENTREL_API BiometricInterface {
 public:
  virtual ~BiometricInterface() = default;

  /// Not retained: null once the delegate is gone.
  virtual std::shared_ptr<BiometricObserver> delegate() const = 0;
  virtual void setDelegate(const std::shared_ptr<BiometricObserver>& delegate) = 0;

  /// How log lines name the object.
  virtual std::string description() const { return "<BiometricKitInterface>"; }

  // Operations that an interface may not answer.
  std::function<bool()> isTouchIDCapable;
  std::function<bool()> isPearlIDCapable;
  /// matchWithMode:andCredentialSet:, with no credential set.
  std::function<void(std::int64_t mode)> matchWithMode;
  std::function<void()> cancel;
  /// detectFingerWithOptions:, with no options.
  std::function<void()> detectFingerWithOptions;
  /// Whether it answers matchOperation:matchedWithResult:, which nobody here calls.
  bool answersMatchOperation = false;
};

/// The right to have the sensor match, held under a reason until it is invalidated.
class SENTREL_API BiometricMatchAssertion {
 public:
  virtual ~BiometricMatchAssertion() = default;
  virtual const std::string& reason() const = 0;
  virtual void invalidate() = 0;
};

/// The home screen's share of the sensor.
class SENTREL_API SBUIBiometricResource {
 public:
  using Assertion = std::shared_ptr<BiometricMatchAssertion>;

  virtual ~SBUIBiometricResource() = default;

  /// May be null.
  virtual std::shared_ptr<BiometricInterface> _biometricKitInterface() = 0;

  /// Observers are not retained. Adding one twice or removing an unknown one changes nothing.
  virtual void addObserver(const std::shared_ptr<BiometricObserver>& observer) = 0;
  virtual void removeObserver(const std::shared_ptr<BiometricObserver>& observer) = 0;

  virtual bool isFingerOn() const = 0;

  virtual Assertion acquireMatchingAssertionWithMode(std::int64_t mode,
                                                     const std::string& reason) = 0;

  /// Every assertion that is held, whoever took it.
  virtual std::vector<Assertion> _matchAssertions() const = 0;
  virtual void _removeMatchingAssertion(const Assertion& assertion) = 0;
  virtual void _deactivateAssertion(const Assertion& assertion) = 0;
};

/// What old systems have in place of the resource.
class SENTREL_API SBUIBiometricEventMonitor : public BiometricInterface {
 public:
  /// In the order in which they were added.
  virtual std::vector<std::shared_ptr<BiometricObserver>> observers() const = 0;
  virtual void addObserver(const std::shared_ptr<BiometricObserver>& observer) = 0;
  virtual void removeObserver(const std::shared_ptr<BiometricObserver>& observer) = 0;

  virtual bool isMatchingEnabled() const = 0;
  virtual void _setMatchingEnabled(bool value) = 0;
  virtual void _startMatching() = 0;

  std::string description() const override { return "<SBUIBiometricEventMonitor>"; }
};

/// The manager of the BiometricKit framework.
class SENTREL_API BiometricKitManager {
 public:
  virtual ~BiometricKitManager() = default;

  /// Not retained, and may be null.
  virtual std::shared_ptr<BiometricInterface> delegate() const = 0;
  virtual void setDelegate(const std::shared_ptr<BiometricInterface>& delegate) = 0;

  // Operations that a manager may not answer.
  std::function<bool()> isTouchIDCapable;
  std::function<std::optional<PropertyList::Dictionary>()> getSensorInfo;
  std::function<std::optional<PropertyList::Dictionary>()> getProtectedConfiguration;
};

/// Reads what BiometricKitManager::getProtectedConfiguration hands out.
class SENTREL_API BKUserProtectedConfiguration {
 public:
  virtual ~BKUserProtectedConfiguration() = default;

  /// Whether the sensor may unlock the device, by the effective values of `configuration`.
  virtual bool unlockEnabled(
      const std::optional<PropertyList::Dictionary>& configuration) const = 0;
};

}  // namespace sentrel
