#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "sentrel/bridge/BridgeSettings.h"
#include "sentrel/platform/Platform.h"
#include "sentrel/settings/ProtectedItems.h"
#include "sentrel/settings/SettingsValues.h"
#include "sentrel/settings/UnlockSessions.h"

namespace sentrel {

/// The user's choices in memory, the only writer of the settings file inside the library, and the
/// authority on what is protected now.
///
/// Values change by a whole refresh from the file (loadSettings, reloadSettings) and by the
/// operations that change memory and file together. A process learns of another's write by the
/// notification that every write posts; whoever observes it calls reloadSettings.
///
/// Nothing reports an error: a file that is missing or cannot be read gives the defaults, and is
/// never created or overwritten. Main thread only, but for sharedSettings.
class SENTREL_API SNSettings final : public BridgeSettings {
 public:
  /// Loads the settings file. `platform` and `sessions` outlive the settings.
  SNSettings(Platform& platform, UnlockSessions& sessions);

  /// The current process's settings.
  static SNSettings& sharedSettings();

  // --- Store -------------------------------------------------------------------------------

  void loadSettings();

  /// Fills every property from `file`. Folders and networks that are absent keep their values.
  void loadSettings(const PropertyList::Dictionary& file);

  void reloadSettings() { loadSettings(); }

  /// Stores `data` under `key` in the file, or removes the key when it is none, and posts the
  /// change if asked to. Memory is left as it is. False when there is no readable file or the
  /// write fails; nothing is posted then.
  bool updateSettingsData(std::string_view key, std::optional<PropertyList> data,
                          bool postNotification);

  /// Negates the file's YES or NO under `key`, as the integer 0 or 1. Anything else there, or
  /// nothing, is left alone. Memory follows at the next reload.
  void toggleValue(std::string_view key);

  /// What the file holds under `key` now.
  std::optional<PropertyList> valueForKey(std::string_view key) const;

  // --- Properties read as they stand -------------------------------------------------------

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
  bool isLoggingEnabled() const noexcept override { return values_.loggingEnabled; }
  void setLoggingEnabled(bool value) noexcept { values_.loggingEnabled = value; }

  bool shouldUsePasscodeOnly() const noexcept override;
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

  // --- Texts with their fallbacks ----------------------------------------------------------

  std::string callerNameText() const;
  void setCallerNameText(std::optional<std::string> text) {
    values_.callerNameText = std::move(text);
  }
  std::string callerLabelText() const;
  void setCallerLabelText(std::optional<std::string> text) {
    values_.callerLabelText = std::move(text);
  }
  std::string blurEffectText() const;
  void setBlurEffectText(std::optional<std::string> text) {
    values_.blurEffectText = std::move(text);
  }
  std::string sentrelLabelText() const;

  // --- Lists -------------------------------------------------------------------------------

  const ProtectedItems& protectedApplications() const noexcept { return protectedApplications_; }
  const ProtectedItems& protectedNotificationApps() const noexcept {
    return protectedNotificationApps_;
  }
  const ProtectedItems& protectedSettings() const noexcept { return protectedSettings_; }
  const ProtectedItems& protectedFlipSwitches() const noexcept { return protectedFlipSwitches_; }
  const ProtectedItems& protectedControlCenterItems() const noexcept {
    return protectedControlCenterItems_;
  }

  /// Folder records in order, whatever the file holds in their place.
  const PropertyList::Array& enabledFolders() const noexcept { return enabledFolders_; }

  /// Names of trusted networks in order, duplicates included.
  const PropertyList::Array& wifiNetworks() const noexcept { return wifiNetworks_; }

  // --- Questions: does this need authentication now? ---------------------------------------
  //
  // With `ignoreAllOther` the answer is whether the item is configured as protected, whatever the
  // main switch, the network and the open sessions say.

  /// The process's own application.
  bool isAppProtected() const;
  bool isAppProtected(std::string_view bundleIdentifier, bool ignoreAllOther = false) const;

  /// Whether the joined network is one of the trusted ones.
  bool isCurrentlyConnectedToTrustedNetwork() const;

  // --- Trusted networks --------------------------------------------------------------------

  bool hasWiFiNetwork(std::string_view name) const;

 private:
  /// Whether the item's own set is to be consulted: the system is on, no trusted network is
  /// joined and no open session covers the item.
  bool passesGate(const SessionItem& item) const;

  void loadValues(const PropertyList::Dictionary& file);
  void loadLists(const PropertyList::Dictionary& file);

  Platform& platform_;
  UnlockSessions& sessions_;
  SettingsValues values_;
  ProtectedItems protectedApplications_;
  ProtectedItems protectedNotificationApps_;
  ProtectedItems protectedSettings_;
  ProtectedItems protectedFlipSwitches_;
  ProtectedItems protectedControlCenterItems_;
  PropertyList::Array enabledFolders_;
  PropertyList::Array wifiNetworks_;
};

}  // namespace sentrel
