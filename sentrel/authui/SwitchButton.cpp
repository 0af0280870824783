#include "sentrel/authui/SwitchButton.h"

#include "sentrel/bridge/SNUtils.h"

namespace sentrel {
namespace {

std::string passcodeTitle() {
  return std::string(SNUtils::localizedString("Enter Passcode"));
}

std::string biometricTitle() {
  return std::string(
      SNUtils::localizedString(SNUtils::supportsFaceID() ? "Use Face ID" : "Use Fingerprint"));
}

}  // namespace

bool isSwitchButtonTitle(const std::string& title) {
  return title == passcodeTitle() || title == biometricTitle();
}

std::string switchButtonTitleAfter(const std::string& title) {
  return title == passcodeTitle() ? biometricTitle() : passcodeTitle();
}

}  // namespace sentrel
