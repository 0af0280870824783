#pragma once

#include <optional>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// Where a passcode screen keeps everything that outlives it. The screen itself stores nothing.
///
/// Operations with a body are optional: what they do or answer there is what a screen goes by whose
/// delegate lacks them. All are called on the main thread.
class SENTREL_API SNPasscodeViewControllerDelegate {
 public:
  virtual ~SNPasscodeViewControllerDelegate() = default;

  // --- The passcode --------------------------------------------------------------------------

  /// The stored passcode; none and an empty one mean that there is no passcode.
  virtual std::optional<std::string> passcode() = 0;
  virtual void deletePasscode() = 0;
  /// None where a flow ended before a new passcode was typed.
  virtual void savePasscode(const std::optional<std::string>& /*passcode*/) {}

  /// An entry is about to be compared with the stored passcode. NO refuses it unseen, as a wrong
  /// one.
  virtual bool passcodeWillBeChecked() { return true; }
  /// That entry was the stored passcode.
  virtual void passcodeDidMatch() {}

  // --- What became of the screen -------------------------------------------------------------

  /// A passcode is about to be stored where there was none.
  virtual void passcodeWasEnabled() {}
  /// The owner is proven: on the lock screen, or for turning the passcode off.
  virtual void passcodeWasEnteredSuccessfully() {}
  virtual void passcodeViewControllerWillClose() {}
  /// After each wrong entry from the screen's limit on.
  virtual void maxNumberOfFailedAttemptsReached() {}
  virtual void logoutButtonWasPressed() {}

  // --- The fingerprint -----------------------------------------------------------------------

  virtual bool allowUnlockWithTouchID() = 0;
  virtual void saveAllowUnlockWithTouchID(bool allowed) = 0;

  // --- The timer -----------------------------------------------------------------------------

  /// How long one may stay away before the lock screen comes back, in seconds; -1 for unknown.
  virtual double timerDuration() { return -1; }
  virtual void saveTimerDuration(double /*seconds*/) {}
  /// When the owner last went away, in the delegate's own count of seconds; -1 for unknown.
  virtual double timerStartTime() { return -1; }
  /// The owner goes away now.
  virtual void saveTimerStartTime() {}
  virtual bool didPasscodeTimerEnd() { return false; }
};

}  // namespace sentrel
