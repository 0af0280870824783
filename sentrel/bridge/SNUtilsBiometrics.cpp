#include <algorithm>
#include <utility>

#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/BridgeSettings.h"
#include "sentrel/bridge/Current.h"

namespace sentrel {
namespace {

constexpr std::string_view passcodeText = "Please authenticate yourself using Sentrel's passcode.";
constexpr std::string_view cannotAuthenticateText =
    "Your device cannot authenticate using TouchID.";

/// The sensor as the home screen's resource offers it, or null.
std::shared_ptr<BiometricInterface> biometricInterface() {
  const auto& resource = currentPlatform().biometricResource;
  return resource ? resource->_biometricKitInterface() : nullptr;
}

/// How many bytes the first letter of a text that is not empty takes.
std::size_t firstLetterLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  return std::min(length, text.size());
}

/// Letters count as the platform counts them: one of four bytes is a pair of which neither half has
/// a case, and so stays as it is.
std::string withFirstLetterLowered(const std::string& text, const CaseMapping& mapping) {
  if (text.empty()) return text;
  const std::size_t length = firstLetterLength(text);
  if (length == 4) return text;
  if (length == text.size()) return mapping.uppercased(text);
  return mapping.lowercased(std::string_view(text).substr(0, length)) + text.substr(length);
}

PlatformError cannotAuthenticate() {
  return {"com.quorvin.sentrel", -1, std::string(SNUtils::localizedString(cannotAuthenticateText))};
}

}  // namespace

std::optional<std::string> SNUtils::authenticationMessage() {
  if (Process::current().bridgeSettings().shouldUsePasscodeOnly())
    return std::string(localizedString(passcodeText));
  return currentState().defaultMessage;
}

std::optional<std::string> SNUtils::loweredCaseAuthenticationMessage() {
  const auto message = authenticationMessage();
  if (!message) return std::nullopt;
  const CaseMapping& mapping = *currentPlatform().caseMapping;
  return supportsFaceID() ? withFirstLetterLowered(*message, mapping)
                          : mapping.lowercased(*message);
}

bool SNUtils::supportsTouchID() {
  const auto interface = biometricInterface();
  if (interface && interface->isTouchIDCapable) return interface->isTouchIDCapable();
  return currentState().context->canEvaluateBiometricPolicy();
}

bool SNUtils::supportsFaceID() {
  BridgeState& state = currentState();
  if (state.supportsFaceID) return true;
  const auto interface = biometricInterface();
  if (interface && interface->isPearlIDCapable && interface->isPearlIDCapable())
    state.supportsFaceID = true;
  return state.supportsFaceID;
}

bool SNUtils::isBioMetricsSupported() {
  const auto interface = biometricInterface();
  if (interface && interface->isTouchIDCapable && interface->isPearlIDCapable)
    return interface->isTouchIDCapable() || interface->isPearlIDCapable();
  const auto& manager = currentPlatform().biometricKit;
  if (!manager) return ask<messages::IsTouchIDSupported>();
  if (manager->isTouchIDCapable)
    return manager->isTouchIDCapable() || currentState().supportsFaceID;
  if (manager->getSensorInfo) return manager->getSensorInfo().has_value();
  return supportsTouchID() || supportsFaceID();
}

bool SNUtils::isBioMetricEnabledForUnlock() {
  const Platform& platform = currentPlatform();
  if (!platform.biometricKit || !platform.biometricKit->getProtectedConfiguration) return true;
  const auto configuration = platform.biometricKit->getProtectedConfiguration();
  if (platform.protectedConfiguration)
    return platform.protectedConfiguration->unlockEnabled(configuration);
  const PropertyList* enabled =
      configuration ? find(*configuration, "BKUserCfgTouchIDLoginEnabled") : nullptr;
  return enabled && enabled->boolValue();
}

void SNUtils::requestForAuthentication(const std::string& reason,
                                       AuthenticationCompletion completion) {
  if (!completion) completion = [](bool, const std::optional<PlatformError>&) {};
  if (!supportsTouchID()) return completion(true, std::nullopt);
  const auto context = currentPlatform().localAuthentication->makeContext();
  context->setLocalizedFallbackTitle("");
  if (!context->canEvaluateBiometricPolicy()) return completion(false, cannotAuthenticate());
  // The reply holds the context, which ends its evaluation when it is let go.
  context->evaluateBiometricPolicy(
      reason,
      [context, completion = std::move(completion)](
          bool success, const std::optional<PlatformError>& error) { completion(success, error); });
}

}  // namespace sentrel
