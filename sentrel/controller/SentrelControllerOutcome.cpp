#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/controller/BiometricEvents.h"
#include "sentrel/controller/SentrelController.h"

namespace sentrel {
namespace {

constexpr std::uint32_t vibrationSound = 4095;
constexpr std::int64_t vibrationMilliseconds = 300;

constexpr double shakeDistance = 30;
constexpr Seconds shakeDuration{0.4};
constexpr double shakeDamping = 0.2;
constexpr double shakeVelocity = 1;
constexpr Seconds restartDelay{0.5};

}  // namespace

void SentrelController::executeCompletionBlock(bool allowed, BiometricEvent observeEvent) {
  const bool isMatch = observeEvent == matchEvent;
  setJustAuthenticated(isMatch);
  if (isMatch)
    if (const auto view = viewInUse()) view->hideKeyboard();
  deferred_.drop(requestInProgress());
  // Taken out before it is called: what it does cannot end the request a second time.
  if (const auto completion = std::exchange(completionBlock_, nullptr))
    completion(isMatch, allowed);
  bridge_.postDarwinNotification(isMatch ? notifications::authenticationSuccess
                                         : notifications::authenticationCancelled);
}

void SentrelController::handleAuthentication(bool success) {
  const auto handler = std::exchange(completionHandler_, nullptr);
  if (!handler) return;
  bridge_.logMessage("going to call completionHandler(), success: %d", success);
  handler(success, success);
}

void SentrelController::passcodeMatchedSuccessfully() {
  passcodeMatched(/*matched=*/true, /*animated=*/true);
}

void SentrelController::passcodeMatched(bool matched, bool animated) {
  const auto view = viewInUse();
  if (view) view->hideKeyboard();
  if (isAlertShowing()) {
    if (matched) {
      monitor_->stopManager();
      invokeCustomInvocation();
    }
    dismissAuthenticationViewController(animated, nullptr);
    executeCompletionBlock(matched, matched ? matchEvent : noEvent);
  }
  if (view) view->resetPasscodeState();
}

void SentrelController::setInvocation(std::shared_ptr<Invocation> invocation) {
  deferred_.set(std::move(invocation), platform_.mainQueue->turn(), requestInProgress());
}

void SentrelController::invokeCustomInvocation() {
  const auto invocation = deferred_.take(requestInProgress());
  if (!invocation) return;
  bridge_.setCurrentAuthenticatedAppBundleId(invocation->argumentBundleIdentifier());
  invocation->invoke();
}

// --- Failure feedback ----------------------------------------------------------------------------

void SentrelController::handleAuthenticationFailed(bool isFinal) {
  if (!isAlertShowing()) return;
  vibrateOnError();
  const PromptSurface* shown = shownSurface();
  const std::shared_ptr<UIView> shaken = shown ? shown->shakenView() : nullptr;
  if (!shaken) return;
  shaken->setTransform(CGAffineTransform::makeTranslation(shakeDistance, 0));
  UIView::animateWithDuration(
      shakeDuration, Seconds(0), shakeDamping, shakeVelocity,
      [&shaken] { shaken->setTransform(CGAffineTransform()); },
      whileAlive([isFinal](SentrelController& self, bool finished) {
        if (!finished || isFinal || !self.bridge_.isIOS11()) return;
        self.platform_.mainQueue->after(
            restartDelay, self.whileAlive([](SentrelController& it) { it.restartIfShowing(); }));
      }));
}

void SentrelController::vibrateOnError() {
  if (!settings_.isVibrateOnError()) return;
  platform_.audioServices->playSystemSoundWithVibration(
      vibrationSound,
      {{"VibePattern", PropertyList::Array{true, vibrationMilliseconds}}, {"Intensity", 1.0}});
}

}  // namespace sentrel
