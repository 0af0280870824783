#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/PasscodeLockout.h"
#include "host/PasscodeRecord.h"
#include "sentrel/passcode/PasscodeTexts.h"
#include "sentrel/passcode/SNPasscodeViewControllerDelegate.h"

namespace sentrel {

class SNPasscodeViewController;
class SNSettings;

}  // namespace sentrel

namespace sentrel::host {

/// A delegate that is ready for use. The passcode is the one that the prompt asks for, in the
/// settings file; everything else is in a file of its own (PasscodeRecord).
///
/// The prompt has six boxes, so it stores six digits and nothing else; what it will not store, and
/// what it could not, it says in words and leaves as it was. A passcode in the file that cannot be
/// deciphered, or a file that cannot be read any more, stays a passcode that no entry matches.
///
/// Optionally it locks attempts out; a screen has that only of this delegate. Make it inside the
/// process, and keep it as long as the screen is in use. Main thread only.
class PasscodeKeeper : public SNPasscodeViewControllerDelegate {
 public:
  using Complain = std::function<void(const std::string& text)>;

  /// `complain` may be empty.
  explicit PasscodeKeeper(Complain complain = {});

  /// Makes `keeper` the screen's delegate and loads the screen's defaults, with six boxes.
  static void attach(const std::shared_ptr<PasscodeKeeper>& keeper,
                     const std::shared_ptr<SNPasscodeViewController>& screen);

  /// Before a settings flow: another process may have removed a passcode of another length.
  void useSixBoxes();

  /// Off until set.
  void setLockoutRule(const LockoutRule& rule) { lockout_.setRule(rule); }
  /// How long entries are refused from now on, however right; 0 where they are not.
  Seconds lockoutRemaining() { return lockout_.remaining(); }

  std::optional<std::string> passcode() override;
  void savePasscode(const std::optional<std::string>& passcode) override;
  void deletePasscode() override;
  bool passcodeWillBeChecked() override;
  void passcodeDidMatch() override { lockout_.forgetAttempts(); }

  bool allowUnlockWithTouchID() override;
  void saveAllowUnlockWithTouchID(bool allowed) override;

  double timerDuration() override;
  void saveTimerDuration(double seconds) override;
  /// Seconds since the start of 1970 in Universal Time.
  double timerStartTime() override;
  void saveTimerStartTime() override;
  /// Where a duration is set: once as much time has passed, and also where the start is unknown or
  /// in the future.
  bool didPasscodeTimerEnd() override;

 private:
  void say(const std::string& text) const;
  bool canReadSettings() const;
  double now() const { return platform_.clock->now().time_since_epoch().count(); }

  Platform& platform_;
  SNSettings& settings_;
  Complain complain_;
  PasscodeRecord record_;
  PasscodeLockout lockout_;
  PasscodeStorageNames names_;
  std::weak_ptr<SNPasscodeViewController> screen_;
  /// Whether the settings had a passcode when they could last be read.
  bool hadPasscode_ = false;
};

}  // namespace sentrel::host
