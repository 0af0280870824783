#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace sentrel {

/// The scalar entries of the settings file as they were read, before any gate or fallback.
struct SettingsValues {
  bool sentrelEnabled = false;
  bool vibrateOnError = false;
  bool appArrangementProtected = false;
  bool is3DTouchProtected = false;
  bool appSwitcherProtected = false;
  bool respringProtected = false;
  bool rebootProtected = false;
  bool unlockWithAppleWatch = false;
  bool usePasscodeOnly = false;
  bool callerIDProtected = false;
  bool callerIDProtectedAllowAnswer = false;
  bool callerIDProtectedForContactsOnly = false;
  bool callerIDProtectedRemoveFromLockScreen = false;
  bool hideCallerInfoOnAttentionAway = false;
  bool showNotificationAlert = false;
  bool rememberUnlockSession = false;
  bool rememberUnlockUntilDeviceLocked = false;
  bool applyUnlockSessionToAll = false;
  bool photosProtected = false;
  bool quitProtectedFolderOnAppLaunch = false;
  bool allFoldersProtected = false;
  bool blurEffectsOn = false;
  bool loggingEnabled = false;

  /// Minutes; read in single precision.
  double rememberUnlockSessionTime = 0;
  std::int64_t blurEffectStyle = 0;

  /// Enciphered, as the file holds it.
  std::optional<std::string> passcode;
  std::optional<std::string> callerNameText;
  std::optional<std::string> callerLabelText;
  std::optional<std::string> blurEffectText;

  /// What holds while nobody knows what the user chose: everything is protected, and nothing stands
  /// in for a proof.
  static SettingsValues allLocked() {
    SettingsValues values;
    for (bool SettingsValues::*flag :
         {&SettingsValues::sentrelEnabled, &SettingsValues::appArrangementProtected,
          &SettingsValues::is3DTouchProtected, &SettingsValues::appSwitcherProtected,
          &SettingsValues::respringProtected, &SettingsValues::rebootProtected,
          &SettingsValues::callerIDProtected,
          &SettingsValues::callerIDProtectedRemoveFromLockScreen,
          &SettingsValues::hideCallerInfoOnAttentionAway, &SettingsValues::showNotificationAlert,
          &SettingsValues::photosProtected, &SettingsValues::allFoldersProtected,
          &SettingsValues::blurEffectsOn})
      values.*flag = true;
    return values;
  }
};

}  // namespace sentrel
