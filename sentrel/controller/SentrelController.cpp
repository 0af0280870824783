#include "sentrel/controller/SentrelController.h"

#include "sentrel/Process.h"
#include "sentrel/authui/SNAlertController.h"
#include "sentrel/authui/SNAlertView.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/Notifications.h"

namespace sentrel {
namespace {

constexpr const char* watchFrameworkPath =
    "/System/Library/PrivateFrameworks/WatchKit.framework/WatchKit";

}  // namespace

SentrelController& SentrelController::sharedInstance() {
  return Process::current().controller();
}

std::shared_ptr<SentrelController> SentrelController::makeShared(Platform& platform,
                                                                 SNSettings& settings) {
  std::shared_ptr<SentrelController> controller(new SentrelController(platform, settings));
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
  SNUtils::logMessage(watchFramework_ ? "Sentrel -> Loading WatchKit.framework is success."
                                      : "Sentrel -> Loading WatchKit.framework is failed.");
}

void SentrelController::startSentrelEvents() {
  const auto manager = SNTouchIDManager::sharedManager();
  const auto clear =
      whileAlive([](SentrelController& self, bool) { self.setJustAuthenticated(false); });
  manager->setManagerStarted(clear);
  manager->setManagerStopped(clear);
  manager->setObserveEventBlock(
      whileAlive([](SentrelController& self, const auto& interface, BiometricEvent event) {
        self.biometricKitInterfaceObserveEvent(interface, event);
      }));
  manager->setHandleEventBlock(
      whileAlive([](SentrelController& self, const auto& interface, BiometricEvent event) {
        self.biometricKitInterfaceHandleEvent(interface, event);
      }));
  manager->startManager();
}

std::shared_ptr<UIResponder> SentrelController::alertController() const {
  if (alert_) return alert_;
  return legacyAlert_;
}

bool SentrelController::isAlertShowing() {
  if (!SNUtils::isSpringBoard() &&
      !SNUtils::isSystemApplication(platform_.mainBundle->bundleIdentifier()))
    return ask<messages::IsAlertShowing>();
  return isOwnPromptShowing();
}

bool SentrelController::isOwnPromptShowing() const {
  if (alert_) return alert_->isAlertPresented();
  return legacyAlert_ && legacyAlert_->isVisible();
}

}  // namespace sentrel
