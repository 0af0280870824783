#pragma once

#include <string>

namespace sentrel {

/// The texts of a passcode screen, by the names of its properties. Each is its own key in the main
/// bundle's default table, looked up when it is shown.
struct PasscodeTexts {
  std::string enterPasscodeString = "Enter your Sentrel passcode";
  std::string enterOldPasscodeString = "Enter your old Sentrel passcode";
  std::string enterNewPasscodeString = "Enter your new Sentrel passcode";
  std::string reenterPasscodeString = "Re-enter your Sentrel passcode";
  std::string reenterNewPasscodeString = "Re-enter your new Sentrel passcode";
  std::string enterPasscodeInfoString = "Passcode info";

  /// Titles of the settings flows.
  std::string enablePasscodeString = "Enable Sentrel Passcode";
  std::string changePasscodeString = "Change Sentrel Passcode";
  std::string turnOffPasscodeString = "Turn Off Sentrel Passcode";

  /// Why the system asks for a fingerprint.
  std::string touchIDString = "Unlock Sentrel using Touch ID";

  /// Kept for whoever set it; no text is looked up in that table.
  std::string localizationTableName = "SNPasscodeViewController";

  friend bool operator==(const PasscodeTexts&, const PasscodeTexts&) = default;
};

/// Names of the entries of a key-value store, for a delegate that wants them. The screen itself
/// reads and writes no store.
struct PasscodeStorageNames {
  std::string keychainPasscodeUsername = "demoPasscode";
  std::string keychainTimerStartUsername = "demoPasscodeTimerStart";
  std::string keychainServiceName = "demoServiceName";
  std::string keychainTimerDurationUsername = "passcodeTimerDuration";
  std::string keychainPasscodeIsSimpleUsername = "passcodeIsSimple";
  std::string keychainAllowUnlockWithTouchID = "allowUnlockWithTouchID";

  friend bool operator==(const PasscodeStorageNames&, const PasscodeStorageNames&) = default;
};

namespace passcode_messages {

inline constexpr const char* noMatch = "Passcodes did not match. Try again.";
inline constexpr const char* reused = "Cannot reuse the same passcode";
inline constexpr const char* oneFailure = "1 Passcode Failed Attempt";
inline constexpr const char* failures = "%li Passcode Failed Attempts";
/// What a count of failures stands in: room for the rounded end.
inline constexpr const char* paddedFailure = "%@     ";

}  // namespace passcode_messages

}  // namespace sentrel
