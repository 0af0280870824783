#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "sentrel/passcode/PasscodeOutcomes.h"
#include "sentrel/passcode/PasscodeTexts.h"
#include "sentrel/passcode/SNPasscodeViewControllerDelegate.h"
#include "sentrel/platform/Export.h"
#include "sentrel/platform/Platform.h"
#include "sentrel/platform/Seconds.h"
#include "sentrel/uikit/NSRange.h"

namespace sentrel {

class HeldFingerprint;
class SecretText;

/// The passcode screen without any view: its modes and steps, what each entry does in them, the
/// count of failures, the timer and the fingerprint, and every delay. What is to be seen of it are
/// the outcomes, which whoever derives from it carries out.
///
/// A mode is entered by one of the _prepare operations, or by a show operation, which also brings
/// the screen up. Entries come in through textField and the OK button. A step that was queued
/// before the screen left does nothing any more; no other step is ever cancelled. Held by a
/// shared_ptr. Main thread only, but for the fingerprint's reply.
class SENTREL_API PasscodeFlow : protected PasscodeOutcomes {
 public:
  ~PasscodeFlow() override;
  PasscodeFlow(const PasscodeFlow&) = delete;
  PasscodeFlow& operator=(const PasscodeFlow&) = delete;

  std::shared_ptr<SNPasscodeViewControllerDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(std::weak_ptr<SNPasscodeViewControllerDelegate> delegate) {
    delegate_ = std::move(delegate);
  }

  // --- State -------------------------------------------------------------------------------

  bool displayedAsLockScreen() const noexcept { return displayedAsLockScreen_; }
  bool displayedAsModal() const noexcept { return displayedAsModal_; }
  void setDisplayedAsModal(bool value) noexcept { displayedAsModal_ = value; }
  bool isCurrentlyOnScreen() const noexcept { return currentlyOnScreen_; }
  bool isUserEnablingPasscode() const noexcept { return enabling_; }
  bool isUserChangingPasscode() const noexcept { return changing_; }
  bool isUserTurningPasscodeOff() const noexcept { return turningOff_; }
  bool isUserSwitchingBetweenPasscodeModes() const noexcept { return switching_; }
  bool isUserBeingAskedForNewPasscode() const noexcept { return askedForNew_; }
  bool isUserConfirmingPasscode() const noexcept { return confirming_; }
  bool newPasscodeEqualsOldPasscode() const noexcept { return newEqualsOld_; }
  bool passcodeAlreadyExists() const noexcept { return passcodeAlreadyExists_; }
  void setPasscodeAlreadyExists(bool value) noexcept { passcodeAlreadyExists_ = value; }
  bool useFallbackPasscode() const noexcept { return useFallbackPasscode_; }
  void setUseFallbackPasscode(bool value) noexcept { useFallbackPasscode_ = value; }
  bool isUsingTouchID() const noexcept { return usingTouchID_; }
  bool isUsingNavBar() const noexcept { return usingNavBar_; }

  /// The new passcode that awaits confirmation.
  const std::optional<std::string>& tempPasscode() const noexcept { return tempPasscode_; }

  /// Wrong entries since the screen was last opened.
  std::int64_t failedAttempts() const noexcept { return failedAttempts_; }
  std::int64_t maxNumberOfAllowedFailedAttempts() const noexcept { return maxFailedAttempts_; }
  /// 0 or less for no limit.
  void setMaxNumberOfAllowedFailedAttempts(std::int64_t count) noexcept {
    maxFailedAttempts_ = count;
  }

  Seconds slideAnimationDuration() const noexcept { return slideAnimationDuration_; }
  void setSlideAnimationDuration(Seconds value) noexcept { slideAnimationDuration_ = value; }
  Seconds lockAnimationDuration() const noexcept { return lockAnimationDuration_; }
  void setLockAnimationDuration(Seconds value) noexcept { lockAnimationDuration_ = value; }

  bool displayAdditionalInfoDuringSettingPasscode() const noexcept { return displaysInfo_; }
  void setDisplayAdditionalInfoDuringSettingPasscode(bool value) noexcept { displaysInfo_ = value; }

  PasscodeTexts& texts() noexcept { return texts_; }
  PasscodeStorageNames& storageNames() noexcept { return storageNames_; }

  const PasscodeDisplay& display() const noexcept { return display_; }

  // --- Form --------------------------------------------------------------------------------

  /// Whether the passcode that is asked for now is entered as digits, in boxes; else as free text.
  bool isSimple() const noexcept;
  /// Where a passcode is stored, opens the flow that changes it and, with it, the form; a null
  /// controller shows nothing. Else, and at the end of that flow, takes the form.
  void setIsSimple(bool simple, const std::shared_ptr<UIViewController>& inViewController,
                   bool asModal);

  /// The length of a simple passcode, in UTF-16 code units, and the number of boxes.
  std::int64_t digitsCount() const noexcept { return digitsCount_; }
  /// Ignored while a passcode is stored: its length is the count. From 4 to 10.
  void setDigitsCount(std::int64_t count);

  // --- Entry into a mode -------------------------------------------------------------------

  void _prepareAsLockScreen();
  void _prepareForEnablingPasscode();
  void _prepareForChangingPasscode();
  void _prepareForTurningOffPasscode();

  void showForEnablingPasscodeInViewController(const std::shared_ptr<UIViewController>& controller,
                                               bool asModal);
  void showForChangingPasscodeInViewController(const std::shared_ptr<UIViewController>& controller,
                                               bool asModal);
  void showForDisablingPasscodeInViewController(const std::shared_ptr<UIViewController>& controller,
                                                bool asModal);
  /// Without a window to cover there is nothing to lock, and the screen does not come up.
  void showLockScreenWithAnimation(bool animated, bool withLogout,
                                   const std::string& andLogoutTitle);
  void showLockscreenWithoutAnimation();

  // --- Entries -----------------------------------------------------------------------------

  /// An edit of the entry field that now holds `text`. Whether it is accepted.
  bool edit(const std::string& text, NSRange shouldChangeCharactersInRange,
            const std::string& replacementString);
  /// Whether `passcode` was accepted, as a step or at last. Comparison takes a time that depends on
  /// the length of `passcode` alone.
  bool _validatePasscode(const std::string& passcode);

  // --- Steps -------------------------------------------------------------------------------

  void _askForNewPasscode();
  void _askForConfirmationPasscode();
  void _reAskForNewPasscode();
  void _denyAccess();
  void _resetUI();
  void _resetUIForReEnteringNewPasscode();
  void _resetTextFields();

  // --- Ends --------------------------------------------------------------------------------

  void _dismissMe();
  void _cancelAndDismissMe();
  void _close();
  void _logoutWasPressed();

  // --- The delegate's storage --------------------------------------------------------------

  void _savePasscode(const std::optional<std::string>& passcode);
  void _deletePasscode();
  std::optional<std::string> _passcode() const;
  /// Looking resets the form to simple.
  bool _doesPasscodeExist();

  /// -1 where the delegate does not know.
  double _timerDuration() const;
  void _saveTimerDuration(double seconds);
  double _timerStartTime() const;
  void _saveTimerStartTime();
  bool _didPasscodeTimerEnd() const;

  /// Kept for whoever set it; nothing asks.
  bool timerStartInSeconds() const noexcept { return timerStartInSeconds_; }
  void setTimerStartInSeconds(bool value) noexcept { timerStartInSeconds_ = value; }

  // --- The fingerprint ---------------------------------------------------------------------

  bool allowUnlockWithTouchID() const noexcept { return allowUnlockWithTouchID_; }
  /// Tells the delegate too.
  void setAllowUnlockWithTouchID(bool allowed);
  bool _allowUnlockWithTouchID() const;
  void _saveAllowUnlockWithTouchID();

  /// Null while no evaluation is under way.
  std::shared_ptr<LAContext> touchIDContext() const;
  /// Asks for the fingerprint in place of the passcode. A second time while that lasts, and where
  /// it cannot be asked for, fingerprints are over until allowed again.
  void _setupFingerPrint();
  void _handleTouchIDFailureAndDisableTouchID(bool disable);

  /// Whether the entry field may give its keyboard up.
  bool mayEndEditing() const noexcept;

  // --- The custom navigation bar -----------------------------------------------------------

  void _setupNavBarWithLogoutTitle(const std::string& title);

  // --- The application's life-cycle --------------------------------------------------------

  void _applicationDidEnterBackground();
  void _applicationWillResignActive();
  void _applicationDidBecomeActive();
  void _applicationWillEnterForeground();

 protected:
  /// `platform` outlives the flow.
  explicit PasscodeFlow(Platform& platform);

  /// For blocks that wait.
  virtual std::weak_ptr<PasscodeFlow> weakFlow() = 0;

  std::string localized(const std::string& text) const;

  /// The custom bar, if there is one.
  void removeBar();

  /// For the first load of the view: whether a passcode exists, and as many boxes as it is long.
  void setUpForView();

  /// What a new screen has that depends on no device, and what its delegate says of the
  /// fingerprint.
  void loadFlowDefaults();

 private:
  using Step = void (PasscodeFlow::*)();

  static constexpr std::int64_t leastDigits = 4;
  static constexpr std::int64_t mostDigits = 10;

  void after(Seconds delay, Step step);
  /// The form stays as it is.
  bool isPasscodeStored() const;
  void forgetTempPasscode();

  void formChanged();
  void fitDigitsToStoredPasscode();
  std::int64_t digitsForStoredPasscode() const;
  void takeDigitsCount(std::int64_t count);

  void beginMode();
  void startOver();
  void showForSettings(Step prepare, const std::shared_ptr<UIViewController>& controller,
                       bool asModal, const std::string& title);

  bool editDigits(const std::string& typed, std::int64_t length);
  bool editFreeText(std::int64_t length);
  void scheduleValidation(const std::string& passcode);
  // What a delegate answered as the stored passcode; null for none.
  bool validateOldPasscode(const std::string& passcode, const SecretText* stored);
  bool validateConfirmation(const std::string& passcode, const SecretText* stored);
  bool validateToEnd(const std::string& passcode, const SecretText* stored);
  bool matchesStored(const std::string& passcode, const SecretText* stored);
  bool takeNewPasscode(const std::string& passcode);
  bool deny();

  void slideToStep(Step reset);
  void showFailures();
  void emptyEntry();
  void hideFailureLabel();
  void choosePrompt();
  void askFor(const std::string& prompt, bool showsInfo = false);

  PasscodeLeaving wayOut() const noexcept;
  void storeNewPasscode();
  void leaveScreen();
  void leaveAfterAnimation();
  void finishLeaving();

  void evaluateFingerprint(LAContext& context, std::uint64_t ticket);
  void fingerprintMatched();
  void fallBack(bool disable);

  Platform& platform_;
  std::weak_ptr<SNPasscodeViewControllerDelegate> delegate_;
  PasscodeTexts texts_;
  PasscodeStorageNames storageNames_;
  PasscodeDisplay display_;
  std::shared_ptr<HeldFingerprint> fingerprint_;

  std::optional<std::string> tempPasscode_;
  std::int64_t digitsCount_ = 4;
  std::int64_t failedAttempts_ = 0;
  std::int64_t maxFailedAttempts_ = 0;
  Seconds slideAnimationDuration_{0.15};
  Seconds lockAnimationDuration_{0.25};

  /// Goes up each time the screen leaves: what was queued before belongs to nothing any more.
  std::uint64_t presentation_ = 0;
  /// How the screen leaves once its animation is over.
  std::optional<PasscodeLeaving> leaving_;

  bool displayedAsLockScreen_ = false;
  bool displayedAsModal_ = true;
  bool currentlyOnScreen_ = false;
  bool enabling_ = false;
  bool changing_ = false;
  bool turningOff_ = false;
  bool switching_ = false;
  bool askedForNew_ = false;
  bool confirming_ = false;
  bool newEqualsOld_ = false;
  bool passcodeAlreadyExists_ = true;
  bool simple_ = true;
  bool useFallbackPasscode_ = false;
  bool usingTouchID_ = false;
  bool allowUnlockWithTouchID_ = false;
  bool usingNavBar_ = false;
  bool displaysInfo_ = false;
  bool timerStartInSeconds_ = false;
};

}  // namespace sentrel
