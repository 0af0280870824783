#include <algorithm>
#include <initializer_list>

#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/controller/BiometricEvents.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/controller/WatchVerdict.h"
#include "sentrel/watch/WatchQueries.h"

namespace sentrel {
namespace {

constexpr Seconds glyphResetDelay{3};
constexpr std::int64_t oneTap = 1;

constexpr std::string_view rule = "***************************************";

std::string describe(const std::shared_ptr<BiometricInterface>& interface) {
  return interface ? interface->description() : "(null)";
}

void logEvent(Bridge& bridge, const std::shared_ptr<BiometricInterface>& interface,
              BiometricEvent event) {
  bridge.logMessage("delegate: %@", describe(interface));
  bridge.logMessage("eventCode: %ld", event);
}

bool isOneOf(GlyphState state, std::initializer_list<GlyphState> states) {
  return std::ranges::find(states, state) != states.end();
}

}  // namespace

void SentrelController::biometricKitInterfaceObserveEvent(
    const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event) {
  logEvent(bridge_, interface, event);
}

void SentrelController::biometricKitInterfaceHandleEvent(
    const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event) {
  bridge_.logMessage(rule);
  logEvent(bridge_, interface, event);
  bridge_.logMessage(rule);
  // The view of a request that takes the passcode alone may not be on screen yet.
  if (isPasscodeForced()) return;
  const auto view = viewInUse();
  if (view && view->currentAuthenticationMode() == SNAuthenticationModePasscode) return;
  if (isResult(bridge_, event))
    handleResult(event);
  else if (isFailedTry(bridge_, event) && !lastResultWasMatch_)
    handleFailedTry(event);
  else if (event == fingerLiftedEvent)
    handleFingerUp();
  else if (event == attemptsExhaustedEvent)
    handleAttemptsExhausted();
  else
    resetGlyph();
}

void SentrelController::handleFailedTry(BiometricEvent event) {
  setJustAuthenticated(/*value=*/false);
  showGlyph(failedTryGlyphState(bridge_, event), /*animated=*/true,
            whileAlive([event](SentrelController& self) {
              self.showGlyph(glyphStateAfterTry(self.bridge_, event), /*animated=*/true,
                             self.whileAlive([](SentrelController& it) {
                               it.handleAuthenticationFailed(/*isFinal=*/false);
                             }));
              self.scheduleGlyphReset();
            }));
}

void SentrelController::handleFingerUp() {
  bridge_.postDarwinNotification(notifications::touchIDFingerUp);
  platform_.localCenter->post({std::string(notifications::touchIDFingerUp), std::nullopt});
  if (isPromptWaiting())
    showGlyph(GlyphState::idle, /*animated=*/true, {});
  else
    restSensor();
}

void SentrelController::handleAttemptsExhausted() {
  setJustAuthenticated(/*value=*/false);
  showGlyph(GlyphState::exhausted, /*animated=*/true,
            whileAlive([](SentrelController& self) { self.failPromptAndStop(); }));
}

void SentrelController::failPromptAndStop() {
  monitor_->stopManager();
  handleAuthenticationFailed(/*isFinal=*/true);
  dismissAuthenticationViewController(/*animated=*/true);
  executeCompletionBlock(/*allowed=*/false, noEvent);
  bridge_.lockUI();
}

// --- Results -------------------------------------------------------------------------------------

void SentrelController::handleResult(BiometricEvent event) {
  lastResultWasMatch_ = event == matchEvent;
  const ResultGlyphStates states = resultGlyphStates(bridge_, event);
  bridge_.logMessage("1. eventCode: %ld & modifiedEventCode: %ld", event,
                     static_cast<std::int64_t>(states.first));
  bridge_.logMessage("2. eventCode: %ld & modifiedEventCode: %ld", event,
                     static_cast<std::int64_t>(states.last));
  if (isJustAuthenticated()) {
    bridge_.logMessage("Sentrel was authenticated just a moments ago, hence not doing anything...");
    return restSensor();
  }
  setJustAuthenticated(event == matchEvent);
  const GlyphState shown = states.last;
  showGlyph(shown, /*animated=*/true, whileAlive([event, shown](SentrelController& self) {
              self.finishResult(event, shown);
            }));
  if (bridge_.isIOS11() &&
      isOneOf(shown, {GlyphState::notRecognized, GlyphState::retry, detectionGlyphState(bridge_)}))
    scheduleGlyphReset();
}

void SentrelController::finishResult(BiometricEvent event, GlyphState shown) {
  // What was sensed for an earlier request passes none that takes the passcode alone.
  if (isPasscodeForced()) return setJustAuthenticated(/*value=*/false);
  if (bridge_.isIOS11() &&
      isOneOf(shown, {GlyphState::idle, GlyphState::notRecognized, GlyphState::retry}))
    restartIfShowing();
  if (event == matchEvent)
    takeMatch();
  else if (event == endOfAttemptsEvent(bridge_) && settings_.isUnlockWithAppleWatch())
    askWatch();
}

void SentrelController::takeMatch() {
  monitor_->stopManager();
  invokeCustomInvocation();
  dismissAuthenticationViewController(/*animated=*/true);
  executeCompletionBlock(/*allowed=*/true, matchEvent);
}

// --- The paired watch ----------------------------------------------------------------------------

void SentrelController::askWatch() {
  restSensor();
  watch::askForUnlock(
      bridge_.platform(), /*preferSecondRSSI=*/true,
      whileAlive([request = request_](SentrelController& self, const PropertyList& answer) {
        self.takeWatchAnswer(request, answer);
      }));
}

void SentrelController::takeWatchAnswer(RequestNumber request, const PropertyList& answer) {
  // The request that asked may be over, and another in progress.
  if (!isInProgress(request) || !watchAllowsUnlock(answer)) return;
  watch::vibrate(bridge_.platform(), oneTap);
  // Another event may have restarted it while the watch was asked.
  monitor_->stopManager();
  setJustAuthenticated(/*value=*/true);
  invokeCustomInvocation();
  if (!surface().tellsWhenDismissed()) {
    dismissAuthenticationViewController(/*animated=*/true);
    return executeCompletionBlock(/*allowed=*/true, matchEvent);
  }
  dismissAuthenticationViewController(
      /*animated=*/false, whileAlive([request](SentrelController& self) {
        if (self.isInProgress(request)) self.executeCompletionBlock(/*allowed=*/true, matchEvent);
      }));
}

// --- Glyph and sensor between events -------------------------------------------------------------

/// A prompt is on screen and nobody has passed it.
bool SentrelController::isPromptWaiting() {
  return isAlertShowing() && !isJustAuthenticated();
}

void SentrelController::resetGlyph() {
  if (isPromptWaiting()) showGlyph(GlyphState::idle, /*animated=*/true, {});
}

void SentrelController::scheduleGlyphReset() {
  platform_.mainQueue->after(glyphResetDelay, whileAlive([](SentrelController& self) {
                               if (self.isPromptWaiting())
                                 self.showGlyph(glyphStateAfterTry(self.bridge_),
                                                /*animated=*/true, {});
                             }));
}

/// The sensor is held only for a prompt that is on screen. One whose request is over goes on the
/// next turn, and nobody would stop the sensor after it; nor after one that was just passed.
void SentrelController::restartIfShowing() {
  if (completionBlock_ && isPromptWaiting()) monitor_->startManager();
}

}  // namespace sentrel
