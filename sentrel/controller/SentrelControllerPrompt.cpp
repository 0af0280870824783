#include <chrono>

#include "sentrel/authui/SNAlertController.h"
#include "sentrel/authui/SNAlertView.h"
#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/BiometricEvents.h"
#include "sentrel/controller/SentrelController.h"

namespace sentrel {
namespace {

/// What a new prompt waits for when none is on screen, and how long after it was presented its
/// keyboard is looked at again.
constexpr Seconds shortDelay{0.1};

constexpr std::string_view productName = "Sentrel";
constexpr std::string_view cancelTitle = "Cancel";
constexpr std::string_view enterPasscodeTitle = "Enter Passcode";

std::string localized(std::string_view key) {
  return std::string(SNUtils::localizedString(key));
}

/// The overlay window, if `presenter` presents from there; else null.
std::shared_ptr<SNWindow> overlayOf(const SentrelController::Presenter& presenter) {
  return presenter ? std::dynamic_pointer_cast<SNWindow>(presenter->view()->window()) : nullptr;
}

}  // namespace

void SentrelController::showAuthenticationViewController(const Text& title, const Text& message,
                                                         const Presenter& delegate,
                                                         Completion completion) {
  showAuthenticationViewController(title, message, /*forceTouch=*/false, delegate,
                                   std::move(completion));
}

void SentrelController::showAuthenticationViewController(const Text& title, const Text& message,
                                                         bool forceTouch, const Presenter& delegate,
                                                         Completion completion) {
  const auto delay =
      std::chrono::duration_cast<std::chrono::nanoseconds>(SNUtils::dispatchDelayFromCC());
  platform_.mainQueue->after(
      delay, whileAlive([title, message, forceTouch, delegate,
                         completion = std::move(completion)](SentrelController& self) {
        const bool isPasscodeForced = self.settings_.shouldUsePasscodeOnly() && !forceTouch;
        self.begin({title, message, isPasscodeForced, delegate, ++self.request_}, completion);
      }));
}

void SentrelController::begin(Prompt prompt, Completion completion) {
  completionBlock_ = [completion = std::move(completion)](bool authenticated, bool allowed) {
    if (completion) completion(authenticated, allowed);
  };
  startSentrelEvents();
  const bool isLegacy = SNUtils::canUseAlertView();
  if (!isLegacy) {
    const auto controller = SNAuthenticationViewController::sharedInstance();
    if (controller->currentAuthenticationMode() == SNAuthenticationModePasscode &&
        !prompt.isPasscodeForced)
      controller->toggleAuthenticationModes();
  }
  // A request that is over, or was replaced, by the time its prompt is due has none: nobody would
  // own it.
  const auto show = whileAlive([prompt = std::move(prompt), isLegacy](SentrelController& self) {
    if (!self.isInProgress(prompt.request)) return;
    isLegacy ? self.showLegacyAlert(prompt) : self.presentAlert(prompt);
  });
  // An application asks the home screen whether a prompt shows, but its own goes in any case.
  if (alertController() && (isOwnPromptShowing() || isAlertShowing()))
    dismissAuthenticationViewController(/*animated=*/true, show);
  else if (isLegacy)
    show();
  else
    platform_.mainQueue->after(shortDelay, show);
}

bool SentrelController::hasStoredPasscode() const {
  const auto& passcode = settings_.passcode();
  return passcode && !passcode->empty();
}

// --- Alert controller ----------------------------------------------------------------------------

void SentrelController::presentAlert(const Prompt& prompt) {
  legacyAlert_ = nullptr;
  alert_ = SNAlertController::alertControllerWithTitle(localized(productName), std::nullopt,
                                                       UIAlertControllerStyle::alert);
  const auto controller = SNAuthenticationViewController::sharedInstance();
  alert_->setContentViewController(controller);
  controller->setDelegate(weak_from_this());
  if (prompt.isPasscodeForced)
    controller->switchToPasscodeView();
  else
    animateFingerPrintActions(restingGlyphState(), /*animated=*/false, {});
  controller->setup(prompt.title, prompt.message);
  addActions(*alert_, prompt);
  presentAlertFromDelegate(prompt);
  platform_.mainQueue->after(shortDelay, whileAlive([prompt](SentrelController& self) {
                               self.applyKeyboardRule(prompt);
                             }));
}

void SentrelController::presentAlertFromDelegate(const Prompt& prompt) {
  const auto applyKeyboardRule =
      whileAlive([prompt](SentrelController& self) { self.applyKeyboardRule(prompt); });
  // A prompt that went meanwhile has hidden the overlay window, which would hide this one too.
  if (const auto overlay = overlayOf(prompt.delegate))
    overlay->presentViewController(alert_, /*animated=*/true, applyKeyboardRule);
  else if (prompt.delegate)
    prompt.delegate->presentViewController(alert_, /*animated=*/true, applyKeyboardRule);
}

void SentrelController::addActions(SNAlertController& alert, const Prompt& prompt) {
  if (hasStoredPasscode() && !prompt.isPasscodeForced)
    alert.addAction(UIAlertAction::actionWithTitle(
        localized(enterPasscodeTitle), UIAlertActionStyle::standard,
        whileAlive([](SentrelController& self, const auto&) { self.switchModes(); })));
  alert.addAction(UIAlertAction::actionWithTitle(
      localized(cancelTitle), UIAlertActionStyle::cancel,
      whileAlive([request = prompt.request](SentrelController& self, const auto&) {
        // The button's alert may be gone for long, and another request in progress.
        if (self.isInProgress(request)) self.cancel();
      })));
}

void SentrelController::cancel() {
  setInvocation(nullptr);
  dismissAuthenticationViewController(/*animated=*/true);
  executeCompletionBlock(/*allowed=*/false, noEvent);
  SNTouchIDManager::sharedManager()->stopManager();
}

void SentrelController::applyKeyboardRule(const Prompt& prompt) {
  if (!isInProgress(prompt.request)) return;
  const auto view = authenticationViewInUse();
  if (!view) return;
  prompt.isPasscodeForced ? view->showKeyboard() : view->hideKeyboard();
}

// --- Legacy alert --------------------------------------------------------------------------------

void SentrelController::showLegacyAlert(const Prompt& prompt) {
  alert_ = nullptr;
  legacyAlert_ = std::make_shared<SNAlertView>(localized(productName), std::nullopt,
                                               weak_from_this(), localized(cancelTitle));
  const auto view = SNAuthenticationView::sharedInstance();
  view->setup(prompt.title, prompt.message);
  view->setDelegate(weak_from_this());
  legacyAlert_->setAuthView(view);
  if (hasStoredPasscode() && !prompt.isPasscodeForced)
    legacyAlert_->addButtonWithTitle(localized(enterPasscodeTitle));
  if (view->currentAuthenticationMode() == SNAuthenticationModePasscode && !prompt.isPasscodeForced)
    view->toggleAuthenticationModes();
  else
    view->hideKeyboard();
  if (prompt.isPasscodeForced)
    view->switchToPasscodeView();
  else
    animateFingerPrintActions(restingGlyphState(), /*animated=*/false, {});
  legacyAlert_->show();
  applyKeyboardRule(prompt);
}

void SentrelController::alertView(UIAlertView& alertView, int didDismissWithButtonIndex) {
  // An alert tells of its dismissal late: it may have been dismissed from here, or replaced.
  if (&alertView != legacyAlert_.get()) return;
  if (didDismissWithButtonIndex != alertView.cancelButtonIndex()) return switchModes();
  SNTouchIDManager::sharedManager()->stopManager();
  setInvocation(nullptr);
  dismissAuthenticationViewController(/*animated=*/true);
  executeCompletionBlock(/*allowed=*/false, noEvent);
}

// --- Both ----------------------------------------------------------------------------------------

std::shared_ptr<SNAuthenticationView> SentrelController::authenticationViewInUse() const {
  if (SNUtils::canUseAlertView()) return legacyAlert_ ? legacyAlert_->authView() : nullptr;
  const auto controller = SNAuthenticationViewController::sharedInstance();
  return {controller, &controller->authenticationView()};
}

/// Between the glyph and the passcode.
void SentrelController::switchModes() {
  animateFingerPrintActions(restingGlyphState(), /*animated=*/false, {});
  if (SNUtils::supportsFaceID())
    platform_.mainQueue->async(whileAlive([](SentrelController& self) { self.followMode(); }));
  if (const auto view = authenticationViewInUse()) view->toggleAuthenticationModes();
}

/// A face would be found by itself, and end the prompt while its owner types: the sensor rests
/// meanwhile.
void SentrelController::followMode() {
  const auto view = authenticationViewInUse();
  if (!view || view->currentAuthenticationMode() != SNAuthenticationModePasscode) {
    if (completionBlock_) startSentrelEvents();
    return;
  }
  restSensor();
}

/// Stops the sensor under a prompt that stays. Every stop closes the overlay window, and the prompt
/// may be in it.
void SentrelController::restSensor() {
  SNTouchIDManager::sharedManager()->stopManager();
  const auto presenter = alert_ && completionBlock_ ? alert_->presentingViewController() : nullptr;
  if (const auto overlay = overlayOf(presenter)) overlay->setHidden(false);
}

void SentrelController::animateFingerPrintActions(std::int64_t state, bool animated,
                                                  std::function<void()> completionHandler) {
  const auto view = authenticationViewInUse();
  if (!SNUtils::canUseAlertView())
    return view->animateFingerPrintActions(state, animated, std::move(completionHandler));
  if (view) view->animateFingerPrintActions(state, animated, {});
  if (completionHandler) platform_.mainQueue->after(shortDelay, std::move(completionHandler));
}

void SentrelController::dismissAuthenticationViewController(bool animated) {
  dismissAuthenticationViewController(animated, whileAlive([](SentrelController& self) {
                                        self.animateFingerPrintActions(restingGlyphState(),
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
  if (const auto view = authenticationViewInUse()) view->hideKeyboard();
  // Forgotten first: what the dismissal sets off no longer finds the prompt.
  if (const auto alert = std::exchange(alert_, nullptr))
    return alert->dismissViewControllerAnimated(animated, std::move(completion));
  const auto legacyAlert = legacyAlert_;
  legacyAlert->dismissWithClickedButtonIndex(legacyAlert->cancelButtonIndex(), animated);
  if (completion) completion();
  // The completion still reaches the alert's view, and may have shown another alert.
  if (legacyAlert == legacyAlert_) legacyAlert_ = nullptr;
}

}  // namespace sentrel
