// The timer that brings the lock back, the fingerprint in place of the passcode, and what the
// application's coming and going does to both.

#include <utility>

#include "sentrel/passcode/HeldFingerprint.h"
#include "sentrel/passcode/PasscodeFlow.h"
#include "sentrel/platform/SecretText.h"

namespace sentrel {
namespace {

constexpr double unknownTime = -1;

}  // namespace

// --- The timer -----------------------------------------------------------------------------------

double PasscodeFlow::_timerDuration() const {
  const auto asked = delegate();
  return asked ? asked->timerDuration() : unknownTime;
}

void PasscodeFlow::_saveTimerDuration(double seconds) {
  if (const auto receiver = delegate()) receiver->saveTimerDuration(seconds);
}

double PasscodeFlow::_timerStartTime() const {
  const auto asked = delegate();
  return asked ? asked->timerStartTime() : unknownTime;
}

void PasscodeFlow::_saveTimerStartTime() {
  if (const auto receiver = delegate()) receiver->saveTimerStartTime();
}

bool PasscodeFlow::_didPasscodeTimerEnd() const {
  const auto asked = delegate();
  return asked && asked->didPasscodeTimerEnd();
}

// --- The application's life-cycle ----------------------------------------------------------------

/// While the lock screen is up nobody has come back: the time away goes on.
void PasscodeFlow::_applicationWillResignActive() {
  if (!_doesPasscodeExist()) return;
  if (currentlyOnScreen_ && displayedAsLockScreen_) return;
  useFallbackPasscode_ = false;
  _saveTimerStartTime();
}

void PasscodeFlow::_applicationDidEnterBackground() {
  if (!_doesPasscodeExist()) return;
  if (isEntryFieldEditing()) {
    useFallbackPasscode_ = false;
    endEditing();
  }
  const bool isPushed = currentlyOnScreen_ && !displayedAsModal_;
  if (!isPushed) showCover();
}

void PasscodeFlow::_applicationDidBecomeActive() {
  if (usingTouchID_ && !useFallbackPasscode_ && displayedAsLockScreen_) {
    display_.isContainerHidden = true;
    show(display_);
    endEditing();
  }
  hideCover();
}

void PasscodeFlow::_applicationWillEnterForeground() {
  if (!_doesPasscodeExist() || !_didPasscodeTimerEnd()) return;
  useFallbackPasscode_ = false;
  const bool isPushed = currentlyOnScreen_ && !displayedAsModal_ && !displayedAsLockScreen_;
  if (!isPushed) return showLockscreenWithoutAnimation();
  endEditing();
  leave(PasscodeLeaving::popAtOnce);
  platform_.mainQueue->after(Seconds(0), [weak = weakFlow()] {
    if (const auto self = weak.lock()) self->showLockscreenWithoutAnimation();
  });
}

// --- The fingerprint -----------------------------------------------------------------------------

void PasscodeFlow::setAllowUnlockWithTouchID(bool allowed) {
  allowUnlockWithTouchID_ = allowed;
  _saveAllowUnlockWithTouchID();
}

bool PasscodeFlow::_allowUnlockWithTouchID() const {
  const auto asked = delegate();
  return asked && asked->allowUnlockWithTouchID();
}

void PasscodeFlow::_saveAllowUnlockWithTouchID() {
  if (const auto receiver = delegate())
    receiver->saveAllowUnlockWithTouchID(allowUnlockWithTouchID_);
}

std::shared_ptr<LAContext> PasscodeFlow::touchIDContext() const {
  return fingerprint_->context();
}

void PasscodeFlow::_setupFingerPrint() {
  if (touchIDContext() || !allowUnlockWithTouchID_ || useFallbackPasscode_)
    return _handleTouchIDFailureAndDisableTouchID(/*disable=*/true);
  const auto context = platform_.localAuthentication->makeContext();
  const auto ticket = fingerprint_->hold(context);
  if (!context || !context->canEvaluateBiometricPolicy())
    return _handleTouchIDFailureAndDisableTouchID(/*disable=*/true);
  usingTouchID_ = true;
  endEditing();
  display_.isContainerHidden = true;
  show(display_);
  evaluateFingerprint(*context, ticket);
}

/// The reply comes on a thread of the system's: only what it holds is touched there.
void PasscodeFlow::evaluateFingerprint(LAContext& context, std::uint64_t ticket) {
  context.evaluateBiometricPolicy(
      localized(texts_.touchIDString),
      [held = fingerprint_, ticket, queue = platform_.mainQueue, weak = weakFlow(),
       askedIn = presentation_](bool success, const std::optional<PlatformError>& error) {
        if (!held->letGo(ticket)) return;
        queue->async([weak, askedIn, isMatch = success && !error] {
          const auto self = weak.lock();
          if (!self || self->presentation_ != askedIn) return;
          isMatch ? self->fingerprintMatched() : self->fallBack(/*disable=*/false);
        });
      });
}

/// A match opens the lock screen. It is no answer to a settings flow that began meanwhile.
void PasscodeFlow::fingerprintMatched() {
  if (enabling_ || changing_ || turningOff_) return;
  _dismissMe();
  if (const auto receiver = delegate()) receiver->passcodeWasEnteredSuccessfully();
}

void PasscodeFlow::_handleTouchIDFailureAndDisableTouchID(bool disable) {
  platform_.mainQueue->async([weak = weakFlow(), askedIn = presentation_, disable] {
    const auto self = weak.lock();
    if (self && self->presentation_ == askedIn) self->fallBack(disable);
  });
  fingerprint_->letGo();
}

void PasscodeFlow::fallBack(bool disable) {
  if (disable) usingTouchID_ = allowUnlockWithTouchID_ = false;
  useFallbackPasscode_ = true;
  display_.isContainerHidden = false;
  if (!usingNavBar_) return _resetUI();
  const std::string title = navBarButtonTitle();
  _resetUI();
  _setupNavBarWithLogoutTitle(title);
}

bool PasscodeFlow::mayEndEditing() const noexcept {
  const bool keepsKeyboard = (displayedAsLockScreen_ || displayedAsModal_) && !usingTouchID_ &&
                             useFallbackPasscode_ && currentlyOnScreen_;
  return !keepsKeyboard;
}

}  // namespace sentrel
