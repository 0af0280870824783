// The steps between entries, and what the screen shows in each.

#include "sentrel/bridge/TextFormat.h"
#include "sentrel/passcode/PasscodeFlow.h"

namespace sentrel {
namespace {

/// From the start of a slide to the new step's texts, and from a reset to the keyboard.
constexpr Seconds resetDelay{0.1};
constexpr Seconds shakeDuration{0.6};

CAAnimation shake() {
  return CAAnimation::keyframes("transform.translation.x", {-12, 12, -12, 12, -6, 6, -3, 3, 0},
                                shakeDuration, CATiming{CATiming::Curve::linear});
}

}  // namespace

// --- Steps ---------------------------------------------------------------------------------------

void PasscodeFlow::_askForNewPasscode() {
  askedForNew_ = true;
  confirming_ = false;
  layOutAgain();
  hideFailureLabel();
  slideToStep(&PasscodeFlow::_resetUI);
}

void PasscodeFlow::_askForConfirmationPasscode() {
  askedForNew_ = false;
  confirming_ = true;
  hideFailureLabel();
  slideToStep(&PasscodeFlow::_resetUI);
}

void PasscodeFlow::_reAskForNewPasscode() {
  askedForNew_ = true;
  confirming_ = false;
  forgetTempPasscode();
  tempPasscode_ = "";
  slideToStep(&PasscodeFlow::_resetUIForReEnteringNewPasscode);
}

void PasscodeFlow::slideToStep(Step reset) {
  after(resetDelay, reset);
  slideStep(CAAnimation::pushFromRight(slideAnimationDuration_, CATiming{}));
}

void PasscodeFlow::_denyAccess() {
  _resetTextFields();
  emptyEntry();
  shakeDigitBoxes(shake());
  ++failedAttempts_;
  if (maxFailedAttempts_ >= 1 && failedAttempts_ >= maxFailedAttempts_)
    if (const auto receiver = delegate()) receiver->maxNumberOfFailedAttemptsReached();
  showFailures();
}

void PasscodeFlow::showFailures() {
  const std::string text =
      failedAttempts_ == 1 ? localized(passcode_messages::oneFailure)
                           : formatText(localized(passcode_messages::failures), {failedAttempts_});
  display_.failure = formatText(passcode_messages::paddedFailure, {text});
  display_.failureCornerRadius = failureCornerRadius();
  display_.isFailureHidden = false;
  show(display_);
}

// --- Resets --------------------------------------------------------------------------------------

void PasscodeFlow::_resetUI() {
  _resetTextFields();
  emptyEntry();
  display_.failureLook = PasscodeDisplay::FailureLook::failure;
  if (failedAttempts_ == 0) display_.isFailureHidden = true;
  choosePrompt();
  display_.info = localized(texts_.enterPasscodeInfoString);
  removeBar();
  show(display_);
}

void PasscodeFlow::_resetUIForReEnteringNewPasscode() {
  _resetTextFields();
  emptyEntry();
  display_.prompt =
      localized(isPasscodeStored() ? texts_.enterNewPasscodeString : texts_.enterPasscodeString);
  display_.failure =
      localized(newEqualsOld_ ? passcode_messages::reused : passcode_messages::noMatch);
  display_.failureLook = PasscodeDisplay::FailureLook::notice;
  display_.isFailureHidden = false;
  newEqualsOld_ = false;
  show(display_);
}

void PasscodeFlow::_resetTextFields() {
  display_.maskedBoxes = 0;
  show(display_);
  if (isEntryFieldEditing()) return;
  const bool awaitsFingerprint = allowUnlockWithTouchID_ || usingTouchID_;
  if (awaitsFingerprint && !useFallbackPasscode_) return;
  after(resetDelay, &PasscodeFlow::startEditing);
}

/// Without a text there is nothing to confirm.
void PasscodeFlow::emptyEntry() {
  display_.maskedBoxes = 0;
  display_.isOKButtonHidden = true;
  emptyEntryField();
  show(display_);
}

void PasscodeFlow::hideFailureLabel() {
  display_.isFailureHidden = true;
  show(display_);
}

/// A combination that has no text of its own keeps the one that is there.
void PasscodeFlow::choosePrompt() {
  if (confirming_ && enabling_)
    askFor(texts_.reenterPasscodeString);
  else if (confirming_ && changing_)
    askFor(texts_.reenterNewPasscodeString);
  else if (askedForNew_ && (enabling_ || changing_))
    askFor(texts_.enterNewPasscodeString);
  else if (!confirming_ && !askedForNew_ && changing_)
    askFor(texts_.enterOldPasscodeString);
  else if (!confirming_ && !askedForNew_)
    askFor(texts_.enterPasscodeString, /*showsInfo=*/enabling_ && displaysInfo_);
}

void PasscodeFlow::askFor(const std::string& prompt, bool showsInfo) {
  display_.prompt = localized(prompt);
  display_.isInfoHidden = !showsInfo;
}

// --- The custom navigation bar -------------------------------------------------------------------

void PasscodeFlow::_setupNavBarWithLogoutTitle(const std::string& title) {
  usingNavBar_ = true;
  showNavBar(title);
}

void PasscodeFlow::removeBar() {
  if (!usingNavBar_) return;
  usingNavBar_ = false;
  removeNavBar();
}

void PasscodeFlow::_logoutWasPressed() {
  if (const auto receiver = delegate()) receiver->logoutButtonWasPressed();
}

}  // namespace sentrel
