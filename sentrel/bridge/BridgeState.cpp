#include "sentrel/bridge/BridgeState.h"

#include "sentrel/bridge/SystemVersion.h"
#include "sentrel/platform/Answer.h"

namespace sentrel {
namespace {

constexpr std::string_view faceIDText = "Please authenticate yourself using Face ID.";
constexpr std::string_view fingerPrintText = "Please authenticate yourself using finger print.";

std::optional<std::string_view> textFor(BiometryType type) {
  switch (type) {
    case BiometryType::faceID:
      return faceIDText;
    case BiometryType::touchID:
      return fingerPrintText;
    case BiometryType::none:
      break;
  }
  return std::nullopt;
}

}  // namespace

BridgeState::BridgeState(Platform& platform)
    : context(platform.localAuthentication->makeContext()) {
  const auto text =
      context->canEvaluateBiometricPolicy() ? lookAtContext(platform) : lookAtInterface(platform);
  if (text) defaultMessage = platform.mainBundle->localizedString(*text);
  operationQueue = platform.operationQueues->makeQueue("com.quorvin.sentrel");
}

std::optional<std::string_view> BridgeState::lookAtContext(const Platform& platform) {
  if (!isSystemVersionAtLeast(platform, 11)) return fingerPrintText;
  const BiometryType type = context->biometryType();
  supportsFaceID = type == BiometryType::faceID;
  return textFor(type);
}

std::string_view BridgeState::lookAtInterface(const Platform& platform) {
  const auto interface =
      platform.biometricResource ? platform.biometricResource->_biometricKitInterface() : nullptr;
  if (!interface) return fingerPrintText;
  supportsFaceID =
      answer(interface, &BiometricInterface::isPearlIDCapable).orElse(/*fallback=*/false);
  const bool isTouchIDCapable =
      answer(interface, &BiometricInterface::isTouchIDCapable).orElse(/*fallback=*/false);
  return supportsFaceID && !isTouchIDCapable ? faceIDText : fingerPrintText;
}

}  // namespace sentrel
