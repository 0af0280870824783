#include <chrono>

#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Bridge.h"
#include "sentrel/controller/BiometricEvents.h"
#include "sentrel/controller/SentrelController.h"

namespace sentrel {

void SentrelController::showAuthenticationViewController(const Text& title, const Text& message,
                                                         const Presenter& delegate,
                                                         Completion completion) {
  showAuthenticationViewController(title, message, /*forceTouch=*/false, delegate,
                                   std::move(completion));
}

void SentrelController::showAuthenticationViewController(const Text& title, const Text& message,
                                                         bool forceTouch, const Presenter& delegate,
                                                         Completion completion) {
  beginLater({.number = takeNumber(),
              .title = title,
              .message = message,
              .presenter = delegate,
              .isTouchForced = forceTouch},
             std::move(completion));
}

/// A request is named in the turn in which it is asked for, in whichever it begins.
SentrelController::RequestNumber SentrelController::takeNumber() {
  deferred_.askedFor(++lastAsked_, platform_.mainQueue->turn());
  return lastAsked_;
}

void SentrelController::beginLater(Request request, Completion completion) {
  const auto delay =
      std::chrono::duration_cast<std::chrono::nanoseconds>(bridge_.dispatchDelayFromCC());
  platform_.mainQueue->after(
      delay, whileAlive([request = std::move(request), completion = std::move(completion)](
                            SentrelController& self) { self.begin(request, completion); }));
}

void SentrelController::begin(Request request, Completion completion) {
  request.isPasscodeForced = settings_.shouldUsePasscodeOnly() && !request.isTouchForced;
  // One that is still in progress is replaced.
  if (completionBlock_) deferred_.drop(request_);
  deferred_.begin(request.number);
  request_ = request.number;
  passcodeForced_ = request.isPasscodeForced;
  completionBlock_ = [completion = std::move(completion)](bool authenticated, bool allowed) {
    if (completion) completion(authenticated, allowed);
  };
  startSentrelEvents();
  PromptSurface& chosen = surface();
  chosen.prepare(request.isPasscodeForced);
  // A request that is over, or was replaced, by the time its prompt is due has none: nobody would
  // own it.
  const auto show = whileAlive([request = std::move(request), &chosen](SentrelController& self) {
    if (self.isInProgress(request.number)) self.show(request, chosen);
  });
  // An application asks the home screen whether a prompt shows, but its own goes in any case.
  if (shownSurface() && (isOwnPromptShowing() || isAlertShowing()))
    dismissAuthenticationViewController(/*animated=*/true, show);
  else if (const auto wait = chosen.waitBeforeShowing())
    platform_.mainQueue->after(*wait, show);
  else
    show();
}

void SentrelController::show(const Request& request, PromptSurface& surface) {
  for (const auto& each : {surfaces_.alert.get(), surfaces_.legacy.get()})
    each->forget();
  shownFor_ = request.number;
  surface.show({
      .title = request.title,
      .message = request.message,
      .isPasscodeForced = request.isPasscodeForced,
      .canSwitch = hasStoredPasscode() && !request.isPasscodeForced,
      .glyph = restingGlyphState(bridge_),
      .owner = weak_from_this(),
      .presenter = request.presenter,
      .onSwitch = whileAlive([](SentrelController& self) { self.switchModes(); }),
      .onCancel = whileAlive([number = request.number](SentrelController& self) {
        // The button's alert may be gone for long, and another request in progress.
        if (self.isInProgress(number)) self.cancel();
      }),
      .onSettled =
          whileAlive([request](SentrelController& self) { self.applyKeyboardRule(request); }),
  });
}

bool SentrelController::hasStoredPasscode() const {
  const auto& passcode = settings_.passcode();
  return passcode && !passcode->empty();
}

void SentrelController::cancel() {
  dismissAuthenticationViewController(/*animated=*/true);
  executeCompletionBlock(/*allowed=*/false, noEvent);
  monitor_->stopManager();
}

void SentrelController::applyKeyboardRule(const Request& request) {
  if (!isInProgress(request.number)) return;
  const auto view = viewInUse();
  if (!view) return;
  request.isPasscodeForced ? view->showKeyboard() : view->hideKeyboard();
}

void SentrelController::alertView(UIAlertView& alertView, int didDismissWithButtonIndex) {
  // An alert tells of its dismissal late: it may have been dismissed from here, or replaced.
  if (&alertView != surfaces_.legacy->alert().get()) return;
  if (didDismissWithButtonIndex != alertView.cancelButtonIndex()) return switchModes();
  if (completionBlock_ && !isInProgress(shownFor_)) return;
  monitor_->stopManager();
  dismissAuthenticationViewController(/*animated=*/true);
  executeCompletionBlock(/*allowed=*/false, noEvent);
}

// --- The surfaces --------------------------------------------------------------------------------

PromptSurface& SentrelController::surface() const {
  return bridge_.canUseAlertView() ? *surfaces_.legacy : *surfaces_.alert;
}

PromptSurface* SentrelController::shownSurface() const {
  if (surfaces_.alert->alert()) return surfaces_.alert.get();
  return surfaces_.legacy->alert() ? surfaces_.legacy.get() : nullptr;
}

/// Between the glyph and the passcode.
void SentrelController::switchModes() {
  showGlyph(restingGlyphState(bridge_), /*animated=*/false, {});
  if (bridge_.supportsFaceID())
    platform_.mainQueue->async(whileAlive([](SentrelController& self) { self.followMode(); }));
  if (const auto view = viewInUse()) view->toggleAuthenticationModes();
}

/// A face would be found by itself, and end the prompt while its owner types: the sensor rests
/// meanwhile.
void SentrelController::followMode() {
  if (isJustAuthenticated()) return;
  const auto view = viewInUse();
  if (!view || view->currentAuthenticationMode() != SNAuthenticationModePasscode) {
    if (completionBlock_) startSentrelEvents();
    return;
  }
  restSensor();
}

/// Stops the sensor under a prompt that stays. Every stop closes the overlay window, and the prompt
/// may be in it.
void SentrelController::restSensor() {
  monitor_->stopManager();
  if (const PromptSurface* shown = completionBlock_ ? shownSurface() : nullptr)
    shown->keepVisible();
}

void SentrelController::showGlyph(GlyphState state, bool animated,
                                  std::function<void()> completion) {
  surface().animateGlyph(state, animated, std::move(completion));
}

void SentrelController::animateFingerPrintActions(std::int64_t state, bool animated,
                                                  std::function<void()> completionHandler) {
  showGlyph(static_cast<GlyphState>(state), animated, std::move(completionHandler));
}

void SentrelController::dismissAuthenticationViewController(bool animated) {
  dismissAuthenticationViewController(animated, whileAlive([](SentrelController& self) {
                                        self.showGlyph(restingGlyphState(self.bridge_),
                                                       /*animated=*/false, {});
                                      }));
}

void SentrelController::dismissAuthenticationViewController(bool animated,
                                                            std::function<void()> completion) {
  // What is on screen when it is due may be a later prompt.
  platform_.mainQueue->async(
      whileAlive([prompt = alertController(), animated,
                  completion = std::move(completion)](SentrelController& self) {
        if (prompt && prompt == self.alertController())
          return self.dismissNow(animated, completion);
        if (completion) completion();
      }));
}

void SentrelController::dismissNow(bool animated, std::function<void()> completion) {
  if (const auto view = viewInUse()) view->hideKeyboard();
  shownSurface()->dismiss(animated, std::move(completion));
}

}  // namespace sentrel
