#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "sentrel/settings/SettingsValues.h"

namespace sentrel {

/// The user's single choices in memory: those that are read as they stand, and the setters of all.
/// What a gate or a fallback stands before is read through SNSettings. Nothing here reaches the
/// file, or fails.
class SettingsProperties {
 public:
  bool isSentrelEnabled() const noexcept { return values_.sentrelEnabled; }
  void setSentrelEnabled(bool value) noexcept { values_.sentrelEnabled = value; }
  bool isVibrateOnError() const noexcept { return values_.vibrateOnError; }
  void setVibrateOnError(bool value) noexcept { values_.vibrateOnError = value; }
  bool is3DTouchProtected() const noexcept { return values_.is3DTouchProtected; }
  void set3DTouchProtected(bool value) noexcept { values_.is3DTouchProtected = value; }
  bool isCallerIDProtectedAllowAnswer() const noexcept {
    return values_.callerIDProtectedAllowAnswer;
  }
  void setCallerIDProtectedAllowAnswer(bool value) noexcept {
    values_.callerIDProtectedAllowAnswer = value;
  }
  bool isCallerIDProtectedForContactsOnly() const noexcept {
    return values_.callerIDProtectedForContactsOnly;
  }
  void setCallerIDProtectedForContactsOnly(bool value) noexcept {
    values_.callerIDProtectedForContactsOnly = value;
  }
  bool shouldShowNotificationAlert() const noexcept { return values_.showNotificationAlert; }
  void setShowNotificationAlert(bool value) noexcept { values_.showNotificationAlert = value; }
  bool isRememberUnlockSession() const noexcept { return values_.rememberUnlockSession; }
  void setRememberUnlockSession(bool value) noexcept { values_.rememberUnlockSession = value; }
  bool isRememberUnlockUntilDeviceLocked() const noexcept {
    return values_.rememberUnlockUntilDeviceLocked;
  }
  void setRememberUnlockUntilDeviceLocked(bool value) noexcept {
    values_.rememberUnlockUntilDeviceLocked = value;
  }
  bool shouldApplyUnlockSessionToAll() const noexcept { return values_.applyUnlockSessionToAll; }
  void setApplyUnlockSessionToAll(bool value) noexcept { values_.applyUnlockSessionToAll = value; }
  bool shouldQuitProtectedFolderOnAppLaunch() const noexcept {
    return values_.quitProtectedFolderOnAppLaunch;
  }
  void setQuitProtectedFolderOnAppLaunch(bool value) noexcept {
    values_.quitProtectedFolderOnAppLaunch = value;
  }
  bool isAllFoldersProtected() const noexcept { return values_.allFoldersProtected; }
  void setAllFoldersProtected(bool value) noexcept { values_.allFoldersProtected = value; }
  bool isBlurEffectsOn() const noexcept { return values_.blurEffectsOn; }
  void setBlurEffectsOn(bool value) noexcept { values_.blurEffectsOn = value; }
  bool isLoggingEnabled() const noexcept { return values_.loggingEnabled; }
  void setLoggingEnabled(bool value) noexcept { values_.loggingEnabled = value; }

  /// Chosen, and there is a passcode to ask for.
  bool shouldUsePasscodeOnly() const noexcept {
    return values_.usePasscodeOnly && values_.passcode && !values_.passcode->empty();
  }
  void setUsePasscodeOnly(bool value) noexcept { values_.usePasscodeOnly = value; }

  /// Minutes.
  double rememberUnlockSessionTime() const noexcept { return values_.rememberUnlockSessionTime; }
  void setRememberUnlockSessionTime(double minutes) noexcept {
    values_.rememberUnlockSessionTime = minutes;
  }
  std::int64_t blurEffectStyle() const noexcept { return values_.blurEffectStyle; }
  void setBlurEffectStyle(std::int64_t style) noexcept { values_.blurEffectStyle = style; }

  /// The stored passcode, still enciphered.
  const std::optional<std::string>& passcode() const noexcept { return values_.passcode; }
  void setPasscode(std::optional<std::string> text) { values_.passcode = std::move(text); }

  // --- Set here, read through a gate or with a fallback -------------------------------------

  void setCallerNameText(std::optional<std::string> text) {
    values_.callerNameText = std::move(text);
  }
  void setCallerLabelText(std::optional<std::string> text) {
    values_.callerLabelText = std::move(text);
  }
  void setBlurEffectText(std::optional<std::string> text) {
    values_.blurEffectText = std::move(text);
  }
  void setAppArrangementProtected(bool value) noexcept { values_.appArrangementProtected = value; }
  void setAppSwitcherProtected(bool value) noexcept { values_.appSwitcherProtected = value; }
  void setRespringProtected(bool value) noexcept { values_.respringProtected = value; }
  void setRebootProtected(bool value) noexcept { values_.rebootProtected = value; }
  void setPhotosProtected(bool value) noexcept { values_.photosProtected = value; }
  void setCallerIDProtected(bool value) noexcept { values_.callerIDProtected = value; }
  void setCallerIDProtectedRemoveFromLockScreen(bool value) noexcept {
    values_.callerIDProtectedRemoveFromLockScreen = value;
  }
  void setHideCallerInfoOnAttentionAway(bool value) noexcept {
    values_.hideCallerInfoOnAttentionAway = value;
  }
  void setUnlockWithAppleWatch(bool value) noexcept { values_.unlockWithAppleWatch = value; }

 protected:
  SettingsProperties() = default;
  ~SettingsProperties() = default;

  /// All locked until the file was read for the first time.
  SettingsValues values_ = SettingsValues::allLocked();
};

}  // namespace sentrel
