// What is typed, and what becomes of it.

#include <algorithm>
#include <utility>

#include "sentrel/passcode/PasscodeFlow.h"
#include "sentrel/platform/SecretText.h"
#include "sentrel/settings/PasscodeCipher.h"

namespace sentrel {
namespace {

/// From the last digit to its validation, and from a new passcode to its confirmation.
constexpr Seconds entryDelay{0.15};

/// In a time that depends on the length of `entry` alone.
bool isSame(const std::string& secret, const std::string& entry) noexcept {
  return equalInConstantTime({reinterpret_cast<const std::uint8_t*>(secret.data()), secret.size()},
                             entry);
}

}  // namespace

bool PasscodeFlow::edit(const std::string& text, NSRange shouldChangeCharactersInRange,
                        const std::string& replacementString) {
  if (replacementString == "\n") return false;
  const SecretText typed(
      stringByReplacingCharactersInRange(text, shouldChangeCharactersInRange, replacementString));
  const auto length = static_cast<std::int64_t>(utf16Length(typed.text()));
  return isSimple() ? editDigits(typed.text(), length) : editFreeText(length);
}

bool PasscodeFlow::editDigits(const std::string& typed, std::int64_t length) {
  display_.maskedBoxes = static_cast<std::size_t>(std::min(length, digitsCount_));
  show(display_);
  if (length == digitsCount_) scheduleValidation(typed);
  return length <= digitsCount_;
}

bool PasscodeFlow::editFreeText(std::int64_t length) {
  display_.isOKButtonHidden = length == 0;
  show(display_);
  return true;
}

void PasscodeFlow::scheduleValidation(const std::string& passcode) {
  platform_.mainQueue->after(entryDelay, [weak = weakFlow(), queuedIn = presentation_,
                                          typed = std::make_shared<const SecretText>(passcode)] {
    const auto self = weak.lock();
    if (self && self->presentation_ == queuedIn) self->_validatePasscode(typed->text());
  });
}

bool PasscodeFlow::_validatePasscode(const std::string& passcode) {
  auto answered = _passcode();
  const bool isNone = !answered;
  const SecretText stored(std::exchange(answered, std::nullopt).value_or(""));
  const SecretText* known = isNone ? nullptr : &stored;
  const bool exists = !stored.text().empty();
  if (turningOff_ || (!changing_ && exists)) return validateToEnd(passcode, known);
  if (confirming_) return validateConfirmation(passcode, known);
  if (exists && !askedForNew_) return validateOldPasscode(passcode, known);
  return takeNewPasscode(passcode);
}

bool PasscodeFlow::validateOldPasscode(const std::string& passcode, const SecretText* stored) {
  if (!matchesStored(passcode, stored)) return deny();
  after(slideAnimationDuration_, &PasscodeFlow::_askForNewPasscode);
  failedAttempts_ = 0;
  return true;
}

bool PasscodeFlow::takeNewPasscode(const std::string& passcode) {
  forgetTempPasscode();
  tempPasscode_ = passcode;
  after(entryDelay, &PasscodeFlow::_askForConfirmationPasscode);
  return true;
}

/// Right or wrong, it is a step and no failed attempt.
bool PasscodeFlow::validateConfirmation(const std::string& passcode, const SecretText* stored) {
  newEqualsOld_ = stored && isSame(stored->text(), passcode);
  const bool isConfirmed = tempPasscode_ && isSame(*tempPasscode_, passcode);
  if (isConfirmed && !newEqualsOld_)
    _dismissMe();
  else
    after(slideAnimationDuration_, &PasscodeFlow::_reAskForNewPasscode);
  return true;
}

bool PasscodeFlow::validateToEnd(const std::string& passcode, const SecretText* stored) {
  if (!matchesStored(passcode, stored)) return deny();
  _dismissMe();
  useFallbackPasscode_ = false;
  if (const auto receiver = delegate()) receiver->passcodeWasEnteredSuccessfully();
  return true;
}

bool PasscodeFlow::matchesStored(const std::string& passcode, const SecretText* stored) {
  const auto receiver = delegate();
  if (!stored || !receiver || !receiver->passcodeWillBeChecked()) return false;
  const bool isMatch = isSame(stored->text(), passcode);
  if (isMatch) receiver->passcodeDidMatch();
  return isMatch;
}

bool PasscodeFlow::deny() {
  after(slideAnimationDuration_, &PasscodeFlow::_denyAccess);
  return false;
}

}  // namespace sentrel
