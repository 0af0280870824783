#include "sentrel/controller/SentrelController.h"

#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/Notifications.h"

namespace sentrel {
namespace {

constexpr const char* watchFrameworkPath =
    "/System/Library/PrivateFrameworks/WatchKit.framework/WatchKit";

}  // namespace

SentrelController::SentrelController(Bridge& bridge, SNSettings& settings,
                                     UnlockSessionStore& sessions,
                                     std::shared_ptr<SNTouchIDManager> monitor,
                                     PromptSurfaces surfaces, Late<SNWindow> overlayWindow)
    : bridge_(bridge),
      platform_(bridge.platform()),
      settings_(settings),
      sessions_(sessions),
      monitor_(std::move(monitor)),
      surfaces_(std::move(surfaces)),
      overlayWindow_(std::move(overlayWindow)) {}

std::shared_ptr<SentrelController> SentrelController::makeShared(
    Bridge& bridge, SNSettings& settings, UnlockSessionStore& sessions,
    std::shared_ptr<SNTouchIDManager> monitor, PromptSurfaces surfaces,
    Late<SNWindow> overlayWindow) {
  std::shared_ptr<SentrelController> controller(
      new SentrelController(bridge, settings, sessions, std::move(monitor), std::move(surfaces),
                            std::move(overlayWindow)));
  controller->observeResults();
  controller->loadWatchFramework();
  return controller;
}

void SentrelController::observeResults() {
  const auto observe = [this](std::string_view name, bool success) {
    observations_.push_back(platform_.darwinCenter->addObserver(
        std::string(name), whileAlive([success](SentrelController& self, const Notification&) {
          self.handleAuthentication(success);
        })));
  };
  observe(notifications::authenticationSuccess, true);
  observe(notifications::authenticationCancelled, false);
}

void SentrelController::loadWatchFramework() {
  watchFramework_ = platform_.libraries->open(watchFrameworkPath, DynamicLibraries::Binding::now);
  bridge_.logMessage(watchFramework_ ? "Sentrel -> Loading WatchKit.framework is success."
                                     : "Sentrel -> Loading WatchKit.framework is failed.");
}

void SentrelController::startSentrelEvents() {
  const auto clear =
      whileAlive([](SentrelController& self, bool) { self.setJustAuthenticated(/*value=*/false); });
  monitor_->setManagerStarted(clear);
  monitor_->setManagerStopped(clear);
  monitor_->setObserveEventBlock(
      whileAlive([](SentrelController& self, const auto& interface, BiometricEvent event) {
        self.biometricKitInterfaceObserveEvent(interface, event);
      }));
  monitor_->setHandleEventBlock(
      whileAlive([](SentrelController& self, const auto& interface, BiometricEvent event) {
        self.biometricKitInterfaceHandleEvent(interface, event);
      }));
  monitor_->startManager();
}

void SentrelController::deviceLocked() {
  deviceScreenDimmed();
  sessions_.endWithLock();
}

void SentrelController::deviceScreenDimmed() {
  passcodeMatched(/*matched=*/false, /*animated=*/false);
  // An application that is not the system's keeps its prompt.
  restSensor();
}

std::shared_ptr<UIResponder> SentrelController::alertController() const {
  const PromptSurface* shown = shownSurface();
  return shown ? shown->alert() : nullptr;
}

bool SentrelController::isAlertShowing() {
  if (!bridge_.isSpringBoard() &&
      !bridge_.isSystemApplication(platform_.mainBundle->bundleIdentifier()))
    return ask<messages::IsAlertShowing>(bridge_);
  return isOwnPromptShowing();
}

bool SentrelController::isOwnPromptShowing() const {
  const PromptSurface* shown = shownSurface();
  return shown && shown->isShowing();
}

}  // namespace sentrel
