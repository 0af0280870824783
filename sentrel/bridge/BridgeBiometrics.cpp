#include <algorithm>
#include <utility>

#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/BridgeState.h"
#include "sentrel/platform/Answer.h"

namespace sentrel {
namespace {

constexpr std::string_view passcodeText = "Please authenticate yourself using Sentrel's passcode.";
constexpr std::string_view cannotAuthenticateText =
    "Your device cannot authenticate using TouchID.";

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

}  // namespace

/// The sensor as the home screen's resource offers it, or null.
std::shared_ptr<BiometricInterface> Bridge::biometricInterface() const {
  const auto& resource = platform_.biometricResource;
  return resource ? resource->_biometricKitInterface() : nullptr;
}

std::optional<std::string> Bridge::authenticationMessage() {
  if (settings_.shouldUsePasscodeOnly()) return std::string(localizedString(passcodeText));
  return state().defaultMessage;
}

std::optional<std::string> Bridge::loweredCaseAuthenticationMessage() {
  const auto message = authenticationMessage();
  if (!message) return std::nullopt;
  const CaseMapping& mapping = *platform_.caseMapping;
  return supportsFaceID() ? withFirstLetterLowered(*message, mapping)
                          : mapping.lowercased(*message);
}

bool Bridge::supportsTouchID() {
  if (const auto isCapable = answer(biometricInterface(), &BiometricInterface::isTouchIDCapable))
    return *isCapable;
  return state().context->canEvaluateBiometricPolicy();
}

bool Bridge::supportsFaceID() {
  std::atomic<bool>& supportsFaceID = state().supportsFaceID;
  if (!supportsFaceID && answer(biometricInterface(), &BiometricInterface::isPearlIDCapable)
                             .orElse(/*fallback=*/false))
    supportsFaceID = true;
  return supportsFaceID;
}

bool Bridge::isBioMetricsSupported() {
  const auto interface = biometricInterface();
  if (interface && interface->isTouchIDCapable && interface->isPearlIDCapable)
    return interface->isTouchIDCapable() || interface->isPearlIDCapable();
  const auto& manager = platform_.biometricKit;
  if (!manager) return ask<messages::IsTouchIDSupported>(*this);
  if (manager->isTouchIDCapable) return manager->isTouchIDCapable() || state().supportsFaceID;
  if (manager->getSensorInfo) return manager->getSensorInfo().has_value();
  return supportsTouchID() || supportsFaceID();
}

bool Bridge::isBioMetricEnabledForUnlock() {
  const auto told = answer(platform_.biometricKit, &BiometricKitManager::getProtectedConfiguration);
  if (!told) return true;
  const auto& configuration = *told;
  if (platform_.protectedConfiguration)
    return platform_.protectedConfiguration->unlockEnabled(configuration);
  const PropertyList* enabled =
      configuration ? find(*configuration, "BKUserCfgTouchIDLoginEnabled") : nullptr;
  return enabled && enabled->boolValue();
}

void Bridge::requestForAuthentication(const std::string& reason,
                                      AuthenticationCompletion completion) {
  if (!completion) completion = [](bool, const std::optional<PlatformError>&) {};
  if (!supportsTouchID()) return completion(true, std::nullopt);
  const auto context = platform_.localAuthentication->makeContext();
  context->setLocalizedFallbackTitle("");
  if (!context->canEvaluateBiometricPolicy())
    return completion(false, PlatformError{"com.quorvin.sentrel", -1,
                                           std::string(localizedString(cannotAuthenticateText))});
  // The reply holds the context, which ends its evaluation when it is let go.
  context->evaluateBiometricPolicy(
      reason,
      [context, completion = std::move(completion)](
          bool success, const std::optional<PlatformError>& error) { completion(success, error); });
}

}  // namespace sentrel
