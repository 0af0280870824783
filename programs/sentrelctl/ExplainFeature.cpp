#include "programs/sentrelctl/Explain.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/ServiceNames.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {
namespace {

namespace keys = settings_keys;

/// One of the phone's own features: the switch that protects it, the name under which its sessions
/// go (none: no session counts), whether it needs authentication now, and the switch without which
/// its own has no effect (none: there is no such).
struct Feature {
  std::string_view name;
  std::string_view key;
  std::string_view service;
  bool (SNSettings::*isProtected)() const;
  std::string_view mainKey = {};
};

constexpr Feature features[] = {
    {"arrangement", keys::iconArrangement, service_names::appArrangement,
     &SNSettings::isAppArrangementProtected},
    {"switcher", keys::appSwitcher, service_names::appSwitcher,
     &SNSettings::isAppSwitcherProtected},
    {"respring", keys::respring, service_names::respring, &SNSettings::isRespringProtected},
    {"reboot", keys::reboot, service_names::reboot, &SNSettings::isRebootProtected},
    {"photos", keys::photosProtected, service_names::photos, &SNSettings::isPhotosProtected},
    {"caller-id", keys::callerIDOn, "", &SNSettings::isCallerIDProtected},
    {"caller-id-lock-screen", keys::callerIDRemoveFromLockScreen, "",
     &SNSettings::isCallerIDProtectedRemoveFromLockScreen, keys::callerIDOn},
    {"caller-id-attention", keys::callerIDHideOnAttentionAway, "",
     &SNSettings::isHideCallerInfoOnAttentionAway, keys::callerIDOn},
};

bool isOn(std::string_view key) {
  const auto flag = SNSettings::sharedSettings().valueForKey(key);
  return flag && flag->boolValue();
}

std::string answerOf(std::string_view key) {
  return yesOrNo(isOn(key)) + ": " + std::string(key);
}

/// Without its own switch, Photos may still be protected like any application.
void explainPhotosAsApplication(Explanation& explanation) {
  const bool isListed = SNSettings::sharedSettings().isAppProtected(photosBundleIdentifier,
                                                                    /*ignoreAllOther=*/true);
  explanation.step("in the set?", yesOrNo(isListed) + ": the protected applications");
  if (isListed) explanation.stepOfSession(photosBundleIdentifier);
}

}  // namespace

bool explainFeature(Explanation& explanation, const std::string& name) {
  const Feature& feature = named(features, name, "feature", featureNames());
  explanation.stepsOfActivity();
  if (feature.service.empty())
    explanation.step("open session?", "does not count here");
  else
    explanation.stepOfSession(SNUtils::localizedString(feature.service));
  if (!feature.mainKey.empty()) explanation.step("caller ID hidden?", answerOf(feature.mainKey));
  explanation.step("switched on?", answerOf(feature.key));
  if (feature.key == keys::photosProtected && !isOn(feature.key))
    explainPhotosAsApplication(explanation);
  return (SNSettings::sharedSettings().*feature.isProtected)();
}

std::string featureNames() {
  return namesOf(features);
}

}  // namespace sentrel::sentrelctl
