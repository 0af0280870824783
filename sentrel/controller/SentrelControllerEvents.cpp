#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/BiometricEvents.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/controller/WatchVerdict.h"
#include "sentrel/watch/WatchProtocol.h"

namespace sentrel {
namespace {

constexpr Seconds glyphResetDelay{3};
constexpr std::int64_t idleGlyphState = 0;
constexpr std::int64_t exhaustedGlyphState = 1;
constexpr std::int64_t oneTap = 1;

constexpr std::string_view rule = "***************************************";

std::string describe(const std::shared_ptr<BiometricInterface>& interface) {
  return interface ? interface->description() : "(null)";
}

void logEvent(const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event) {
  SNUtils::logMessage("delegate: %@", describe(interface));
  SNUtils::logMessage("eventCode: %ld", event);
}

}  // namespace

void SentrelController::biometricKitInterfaceObserveEvent(
    const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event) {
  logEvent(interface, event);
}

void SentrelController::biometricKitInterfaceHandleEvent(
    const std::shared_ptr<BiometricInterface>& interface, BiometricEvent event) {
  SNUtils::logMessage(rule);
  logEvent(interface, event);
  SNUtils::logMessage(rule);
  const auto view = authenticationViewInUse();
  if (view && view->currentAuthenticationMode() == SNAuthenticationModePasscode) return;
  if (isResult(event))
    handleResult(event);
  else if (isFailedTry(event) && !lastResultWasMatch_)
    handleFailedTry(event);
  else if (event == fingerLiftedEvent)
    handleFingerUp();
  else if (event == attemptsExhaustedEvent)
    handleAttemptsExhausted();
  else
    resetGlyph();
}

void SentrelController::handleFailedTry(BiometricEvent event) {
  setJustAuthenticated(false);
  animateFingerPrintActions(
      failedTryGlyphState(event), /*animated=*/true, whileAlive([event](SentrelController& self) {
        self.animateFingerPrintActions(glyphStateAfterTry(event), /*animated=*/true,
                                       self.whileAlive([](SentrelController& it) {
                                         it.handleAuthenticationFailed(/*isFinal=*/false);
                                       }));
        self.scheduleGlyphReset();
      }));
}

void SentrelController::handleFingerUp() {
  SNUtils::postDarwinNotification(notifications::touchIDFingerUp);
  platform_.localCenter->post({std::string(notifications::touchIDFingerUp), std::nullopt});
  if (isPromptWaiting())
    animateFingerPrintActions(idleGlyphState, /*animated=*/true, {});
  else
    restSensor();
}

void SentrelController::handleAttemptsExhausted() {
  setJustAuthenticated(false);
  animateFingerPrintActions(exhaustedGlyphState, /*animated=*/true,
                            whileAlive([](SentrelController& self) { self.failPromptAndStop(); }));
}

void SentrelController::failPromptAndStop() {
  SNTouchIDManager::sharedManager()->stopManager();
  setInvocation(nullptr);
  handleAuthenticationFailed(/*isFinal=*/true);
  dismissAuthenticationViewController(/*animated=*/true);
  executeCompletionBlock(/*allowed=*/false, noEvent);
  SNUtils::lockUI();
}

// --- Results -------------------------------------------------------------------------------------

void SentrelController::handleResult(BiometricEvent event) {
  lastResultWasMatch_ = event == matchEvent;
  const auto [first, modified] = modifiedCode(event, endOfAttemptsEvent(platform_));
  SNUtils::logMessage("1. eventCode: %ld & modifiedEventCode: %ld", event, first);
  SNUtils::logMessage("2. eventCode: %ld & modifiedEventCode: %ld", event, modified);
  if (isJustAuthenticated()) {
    SNUtils::logMessage(
        "Sentrel was authenticated just a moments ago, hence not doing anything...");
    return restSensor();
  }
  setJustAuthenticated(event == matchEvent);
  animateFingerPrintActions(modified, /*animated=*/true,
                            whileAlive([event, modified = modified](SentrelController& self) {
                              self.finishResult(event, modified);
                            }));
  if (SNUtils::isIOS11() && (modified == 2 || modified == 7 || modified == detectionEvent()))
    scheduleGlyphReset();
}

void SentrelController::finishResult(BiometricEvent event, BiometricEvent modifiedCode) {
  if (SNUtils::isIOS11() && (modifiedCode == 0 || modifiedCode == 2 || modifiedCode == 7))
    restartIfShowing();
  if (event == matchEvent)
    takeMatch();
  else if (event == endOfAttemptsEvent(platform_) && settings_.isUnlockWithAppleWatch())
    askWatch();
}

void SentrelController::takeMatch() {
  SNTouchIDManager::sharedManager()->stopManager();
  invokeCustomInvocation();
  dismissAuthenticationViewController(/*animated=*/true);
  executeCompletionBlock(/*allowed=*/true, matchEvent);
}

// --- The paired watch ----------------------------------------------------------------------------

void SentrelController::askWatch() {
  restSensor();
  sendGeneralSNWatchQueryWithReply(
      /*preferSecondRSSI=*/true,
      whileAlive([request = request_](SentrelController& self, const PropertyList& answer) {
        self.takeWatchAnswer(request, answer);
      }));
}

void SentrelController::takeWatchAnswer(RequestNumber request, const PropertyList& answer) {
  // The request that asked may be over, and another in progress.
  if (!isInProgress(request) || !watchAllowsUnlock(answer)) return;
  vibrateAppleWatch(oneTap);
  // Another event may have restarted it while the watch was asked.
  SNTouchIDManager::sharedManager()->stopManager();
  setJustAuthenticated(true);
  invokeCustomInvocation();
  if (SNUtils::canUseAlertView()) {
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
  if (isPromptWaiting()) animateFingerPrintActions(idleGlyphState, /*animated=*/true, {});
}

void SentrelController::scheduleGlyphReset() {
  platform_.mainQueue->after(glyphResetDelay, whileAlive([](SentrelController& self) {
                               if (self.isPromptWaiting())
                                 self.animateFingerPrintActions(glyphStateAfterTry(idleGlyphState),
                                                                /*animated=*/true, {});
                             }));
}

/// The sensor is held only for a prompt that is on screen. One whose request is over goes on the
/// next turn, and nobody would stop the sensor after it.
void SentrelController::restartIfShowing() {
  if (completionBlock_ && isAlertShowing()) SNTouchIDManager::sharedManager()->startManager();
}

}  // namespace sentrel
