#include "sentrel/passcode/PasscodeFlow.h"

#include <algorithm>
#include <utility>

#include "sentrel/passcode/HeldFingerprint.h"
#include "sentrel/platform/SecretText.h"

namespace sentrel {

PasscodeFlow::PasscodeFlow(Platform& platform)
    : platform_(platform), fingerprint_(std::make_shared<HeldFingerprint>()) {}

PasscodeFlow::~PasscodeFlow() {
  forgetTempPasscode();
}

void PasscodeFlow::loadFlowDefaults() {
  texts_ = {};
  storageNames_ = {};
  allowUnlockWithTouchID_ = _allowUnlockWithTouchID();
  display_.failure = localized(passcode_messages::oneFailure);
  digitsCount_ = 4;
  maxFailedAttempts_ = 0;
  slideAnimationDuration_ = Seconds(0.15);
  lockAnimationDuration_ = Seconds(0.25);
  simple_ = displayedAsModal_ = passcodeAlreadyExists_ = true;
  newEqualsOld_ = displaysInfo_ = false;
}

std::string PasscodeFlow::localized(const std::string& text) const {
  return std::string(platform_.mainBundle->localizedString(text));
}

/// What finds that the screen has left since belongs to a flow that is over.
void PasscodeFlow::after(Seconds delay, Step step) {
  platform_.mainQueue->after(delay, [weak = weakFlow(), step, queuedIn = presentation_] {
    const auto self = weak.lock();
    if (self && self->presentation_ == queuedIn) (self.get()->*step)();
  });
}

void PasscodeFlow::forgetTempPasscode() {
  if (tempPasscode_) wipe(*tempPasscode_);
  tempPasscode_.reset();
}

// --- Form ----------------------------------------------------------------------------------------

bool PasscodeFlow::isSimple() const noexcept {
  // The old passcode is compared in the stored form, the new one entered in the other.
  return simple_ != (switching_ && (askedForNew_ || confirming_));
}

void PasscodeFlow::setIsSimple(bool simple,
                               const std::shared_ptr<UIViewController>& inViewController,
                               bool asModal) {
  if (!switching_ && !askedForNew_ && _doesPasscodeExist()) {
    switching_ = true;
    return showForChangingPasscodeInViewController(inViewController, asModal);
  }
  switching_ = false;
  simple_ = simple;
  formChanged();
}

void PasscodeFlow::formChanged() {
  emptyEntry();
  if (isSimple()) fitDigitsToStoredPasscode();
  layOutAgain();
}

void PasscodeFlow::setDigitsCount(std::int64_t count) {
  if (!_doesPasscodeExist()) takeDigitsCount(std::clamp(count, leastDigits, mostDigits));
}

/// Boxes of another count could never take the stored passcode.
void PasscodeFlow::fitDigitsToStoredPasscode() {
  if (!isScreenLoaded()) return;
  const std::int64_t count = digitsForStoredPasscode();
  if (count != digitsCount_) takeDigitsCount(count);
}

std::int64_t PasscodeFlow::digitsForStoredPasscode() const {
  const SecretText stored(_passcode().value_or(""));
  if (stored.text().empty()) return std::clamp(digitsCount_, leastDigits, mostDigits);
  return static_cast<std::int64_t>(utf16Length(stored.text()));
}

void PasscodeFlow::takeDigitsCount(std::int64_t count) {
  digitsCount_ = count;
  if (!isScreenLoaded()) return;
  emptyEntry();
  makeDigitBoxes();
}

void PasscodeFlow::setUpForView() {
  if (_doesPasscodeExist()) digitsCount_ = digitsForStoredPasscode();
  failedAttempts_ = 0;
}

// --- Entry into a mode ---------------------------------------------------------------------------

/// What an earlier flow may have left: its way out under way, what was typed in it, the fields
/// hidden for a fingerprint, boxes for a passcode that has been replaced since.
void PasscodeFlow::beginMode() {
  finishLeaving();
  forgetTempPasscode();
  usingTouchID_ = false;
  display_.isContainerHidden = false;
  turningOff_ = changing_ = confirming_ = enabling_ = false;
}

void PasscodeFlow::startOver() {
  if (isSimple()) fitDigitsToStoredPasscode();
  layOutAgain();
  _resetUI();
}

void PasscodeFlow::_prepareAsLockScreen() {
  if (currentlyOnScreen_ && !displayedAsLockScreen_) _cancelAndDismissMe();
  beginMode();
  displayedAsLockScreen_ = true;
  switching_ = false;
  showTitle("");
  startOver();
  _setupFingerPrint();
}

void PasscodeFlow::_prepareForEnablingPasscode() {
  beginMode();
  currentlyOnScreen_ = true;
  displayedAsLockScreen_ = switching_ = false;
  enabling_ = true;
  startOver();
}

/// A change may be how the form is switched: that flag stays.
void PasscodeFlow::_prepareForChangingPasscode() {
  beginMode();
  currentlyOnScreen_ = true;
  displayedAsLockScreen_ = false;
  changing_ = true;
  startOver();
}

void PasscodeFlow::_prepareForTurningOffPasscode() {
  beginMode();
  currentlyOnScreen_ = true;
  displayedAsLockScreen_ = switching_ = false;
  turningOff_ = true;
  startOver();
}

// --- The delegate's storage ----------------------------------------------------------------------

void PasscodeFlow::_savePasscode(const std::optional<std::string>& passcode) {
  const auto receiver = delegate();
  if (!passcodeAlreadyExists_ && receiver) receiver->passcodeWasEnabled();
  passcodeAlreadyExists_ = true;
  if (receiver) receiver->savePasscode(passcode);
}

void PasscodeFlow::_deletePasscode() {
  if (const auto receiver = delegate()) receiver->deletePasscode();
}

std::optional<std::string> PasscodeFlow::_passcode() const {
  const auto receiver = delegate();
  return receiver ? receiver->passcode() : std::nullopt;
}

bool PasscodeFlow::_doesPasscodeExist() {
  const bool wasSimple = isSimple();
  simple_ = true;
  if (isSimple() != wasSimple) formChanged();
  return isPasscodeStored();
}

bool PasscodeFlow::isPasscodeStored() const {
  return !SecretText(_passcode().value_or("")).text().empty();
}

}  // namespace sentrel
