#include "sentrel/bridge/Bridge.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"
#include "sentrel/settings/ServiceNames.h"

namespace sentrel {

bool SNSettings::isProtectionActive() const {
  return isSentrelEnabled() && !isCurrentlyConnectedToTrustedNetwork();
}

bool SNSettings::passesGate(const SessionItem& item) const {
  return isProtectionActive() && !isInSession(item);
}

bool SNSettings::isInSession(const SessionItem& item) const {
  // With sessions switched off nobody needs to be asked; that is how most answers come about.
  return isRememberUnlockSession() && sessions_.shouldIgnoreAuthentication(item);
}

bool SNSettings::passesServiceGate(std::string_view serviceName) const {
  return isProtectionActive() && !isServiceInSession(serviceName);
}

bool SNSettings::isServiceInSession(std::string_view serviceName) const {
  return isRememberUnlockSession() &&
         sessions_.shouldIgnoreAuthentication(platform_.mainBundle->localizedString(serviceName));
}

bool SNSettings::passesSwitchGate(const SessionItem& item) const {
  return isProtectionActive() && isFlipSwitchInstalled() && !isInSession(item);
}

bool SNSettings::isFlipSwitchInstalled() const {
  if (!flipSwitchInstalled_) flipSwitchInstalled_ = bridge_.isFlipSwitchInstalled();
  return flipSwitchInstalled_;
}

bool SNSettings::isMember(ItemSet set, std::string_view item, bool ignoreAllOther) const {
  return (ignoreAllOther || passesGate(item)) && holds(set, item);
}

bool SNSettings::isAppProtected() const {
  return isAppProtected(platform_.mainBundle->bundleIdentifier());
}

bool SNSettings::isAppProtected(std::string_view bundleIdentifier, bool ignoreAllOther) const {
  return isMember(ItemSet::applications, bundleIdentifier, ignoreAllOther);
}

bool SNSettings::isSpecifierProtected(std::string_view paneName, bool ignoreAllOther) const {
  const bool skipsGate = ignoreAllOther || paneName == ownSettingsPane_;
  return isMember(ItemSet::settings, paneName, skipsGate);
}

bool SNSettings::isFlipSwitchProtected(std::string_view switchIdentifier,
                                       bool ignoreAllOther) const {
  return (ignoreAllOther || passesSwitchGate(switchIdentifier)) &&
         holds(ItemSet::flipSwitches, switchIdentifier);
}

bool SNSettings::isControlCenterItemProtected(std::string_view itemIdentifier,
                                              bool ignoreAllOther) const {
  return isMember(ItemSet::controlCenterItems, itemIdentifier, ignoreAllOther);
}

bool SNSettings::isSystemServiceProtected(std::string_view service, bool ignoreAllOther) const {
  return (ignoreAllOther || passesGate(service)) &&
         (isUnknown_ || protectedServices_.contains(service, *platform_.caseMapping));
}

bool SNSettings::isAppArrangementProtected() const {
  return passesServiceGate(service_names::appArrangement) && values_.appArrangementProtected;
}

bool SNSettings::isAppSwitcherProtected() const {
  return passesServiceGate(service_names::appSwitcher) && values_.appSwitcherProtected;
}

bool SNSettings::isRespringProtected() const {
  return passesServiceGate(service_names::respring) && values_.respringProtected;
}

bool SNSettings::isRebootProtected() const {
  return passesServiceGate(service_names::reboot) && values_.rebootProtected;
}

bool SNSettings::isPhotosProtected() const {
  return passesServiceGate(service_names::photos) &&
         (values_.photosProtected || isAppProtected(photosBundleIdentifier));
}

bool SNSettings::isCallerIDProtected() const {
  return isProtectionActive() && values_.callerIDProtected;
}

bool SNSettings::isCallerIDProtectedRemoveFromLockScreen() const {
  return isCallerIDProtected() && values_.callerIDProtectedRemoveFromLockScreen;
}

bool SNSettings::isHideCallerInfoOnAttentionAway() const {
  return isCallerIDProtected() && values_.hideCallerInfoOnAttentionAway;
}

bool SNSettings::isUnlockWithAppleWatch() const noexcept {
  return isSentrelEnabled() && values_.unlockWithAppleWatch;
}

}  // namespace sentrel
