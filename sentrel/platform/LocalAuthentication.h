#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PlatformError.h"

namespace sentrel {

enum class BiometryType { none, touchID, faceID };

/// One context for asking the owner to authenticate by the sensor.
class SENTREL_API LAContext {
 public:
  using Reply = std::function<void(bool success, const std::optional<PlatformError>& error)>;

  virtual ~LAContext() = default;

  /// Whether the owner could be asked now: there is a sensor, and something is enrolled.
  virtual bool canEvaluateBiometricPolicy() = 0;

  /// Meaningful once canEvaluateBiometricPolicy was asked.
  virtual BiometryType biometryType() const = 0;

  /// The title of the system dialog's fallback button; an empty one removes the button.
  virtual void setLocalizedFallbackTitle(const std::string& title) = 0;

  /// Asks the owner. `reply` is called once, later, on a thread of the system's.
  virtual void evaluateBiometricPolicy(const std::string& localizedReason, Reply reply) = 0;
};

/// Makes contexts.
class SENTREL_API LocalAuthentication {
 public:
  virtual ~LocalAuthentication() = default;

  virtual std::shared_ptr<LAContext> makeContext() = 0;
};

}  // namespace sentrel
