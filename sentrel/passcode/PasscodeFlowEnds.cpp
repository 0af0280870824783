// How the screen comes up and how it leaves.

#include <utility>

#include "sentrel/passcode/PasscodeFlow.h"
#include "sentrel/platform/SecretText.h"

namespace sentrel {

// --- Coming up -----------------------------------------------------------------------------------

void PasscodeFlow::showForSettings(Step prepare,
                                   const std::shared_ptr<UIViewController>& controller,
                                   bool asModal, const std::string& title) {
  displayedAsModal_ = asModal;
  (this->*prepare)();
  present(controller);
  showTitle(localized(title));
}

void PasscodeFlow::showForEnablingPasscodeInViewController(
    const std::shared_ptr<UIViewController>& controller, bool asModal) {
  passcodeAlreadyExists_ = false;
  showForSettings(&PasscodeFlow::_prepareForEnablingPasscode, controller, asModal,
                  texts_.enablePasscodeString);
}

void PasscodeFlow::showForChangingPasscodeInViewController(
    const std::shared_ptr<UIViewController>& controller, bool asModal) {
  showForSettings(&PasscodeFlow::_prepareForChangingPasscode, controller, asModal,
                  texts_.changePasscodeString);
}

void PasscodeFlow::showForDisablingPasscodeInViewController(
    const std::shared_ptr<UIViewController>& controller, bool asModal) {
  showForSettings(&PasscodeFlow::_prepareForTurningOffPasscode, controller, asModal,
                  texts_.turnOffPasscodeString);
}

void PasscodeFlow::showLockScreenWithAnimation(bool animated, bool withLogout,
                                               const std::string& andLogoutTitle) {
  _prepareAsLockScreen();
  if (!coverWindow(animated)) return;
  currentlyOnScreen_ = true;
  if (withLogout) _setupNavBarWithLogoutTitle(andLogoutTitle);
}

void PasscodeFlow::showLockscreenWithoutAnimation() {
  showLockScreenWithAnimation(/*animated=*/false, /*withLogout=*/false, "");
}

// --- Leaving -------------------------------------------------------------------------------------

void PasscodeFlow::_dismissMe() {
  failedAttempts_ = 0;
  leaveScreen();
  // Nobody who comes later is spared the old passcode because this flow had asked for a new one.
  askedForNew_ = false;
  // What leaves is decided now: another flow may have begun by the time the animation is over.
  leaving_ = wayOut();
  platform_.mainQueue->after(lockAnimationDuration_, [weak = weakFlow()] {
    if (const auto self = weak.lock()) self->leaveAfterAnimation();
  });
  if (displayedAsLockScreen_)
    slideAway(lockAnimationDuration_);
  else if (turningOff_)
    _deletePasscode();
  else
    storeNewPasscode();
}

PasscodeLeaving PasscodeFlow::wayOut() const noexcept {
  if (displayedAsLockScreen_) return PasscodeLeaving::removeFromWindow;
  return displayedAsModal_ ? PasscodeLeaving::dismiss : PasscodeLeaving::popAtOnce;
}

/// None where no new passcode was typed: a passcode that was stored already let the user through.
void PasscodeFlow::storeNewPasscode() {
  auto passcode = std::exchange(tempPasscode_, std::nullopt);
  _savePasscode(passcode);
  if (passcode) wipe(*passcode);
  if (!switching_) return;
  confirming_ = false;
  setIsSimple(!isSimple(), nullptr, displayedAsModal_);
}

/// What is still queued belongs to nothing any more, the keyboard's return included.
void PasscodeFlow::leaveScreen() {
  currentlyOnScreen_ = false;
  _resetUI();
  endEditing();
  ++presentation_;
}

void PasscodeFlow::leaveAfterAnimation() {
  if (const auto receiver = delegate()) receiver->passcodeViewControllerWillClose();
  finishLeaving();
}

void PasscodeFlow::finishLeaving() {
  const auto way = std::exchange(leaving_, std::nullopt);
  if (way) leave(*way);
}

void PasscodeFlow::_cancelAndDismissMe() {
  askedForNew_ = changing_ = confirming_ = enabling_ = turningOff_ = switching_ = false;
  forgetTempPasscode();
  leaveScreen();
  if (const auto receiver = delegate()) receiver->passcodeViewControllerWillClose();
  if (displayedAsModal_)
    leave(PasscodeLeaving::dismiss);
  else if (!displayedAsLockScreen_)
    leave(PasscodeLeaving::popAnimated);
}

void PasscodeFlow::_close() {
  displayedAsLockScreen_ ? _dismissMe() : _cancelAndDismissMe();
}

}  // namespace sentrel
