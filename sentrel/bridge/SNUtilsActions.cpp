#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/Current.h"
#include "sentrel/bridge/Notifications.h"

namespace sentrel {
namespace {

using Binding = DynamicLibraries::Binding;

constexpr Seconds relockDelay(0.2);
constexpr int buttonSource = 1;
constexpr int terminationReason = 5;
constexpr std::string_view springBoardServices =
    "/System/Library/PrivateFrameworks/SpringBoardServices.framework/SpringBoardServices";

/// Whether the device was unlocked and could be locked by the keeper of its passcode.
bool lockByPasscodeManager() {
  const auto& manager = currentPlatform().passcodeManager;
  if (!manager || !manager->lockDevice || !manager->isDeviceUnlocked) return false;
  if (!manager->isDeviceUnlocked()) return false;
  manager->lockDevice();
  return true;
}

void finishRelock() {
  const auto& manager = currentPlatform().lockScreenManager;
  if (!manager) return;
  if (manager->lockUIFromSource) manager->lockUIFromSource(buttonSource);
  if (manager->homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown)
    manager->homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown(/*shown=*/false);
}

void relockUI() {
  const auto& manager = currentPlatform().lockScreenManager;
  if (manager && manager->_relockUIForButtonPress)
    manager->_relockUIForButtonPress(/*buttonPress=*/true, /*afterCall=*/false);
  else if (manager && manager->_relockUIForButtonlikeSource)
    manager->_relockUIForButtonlikeSource(/*buttonlikeSource=*/true, /*afterCall=*/false);
  else
    SNUtils::logMessage("NO API Available to lock the Device **********");
  currentPlatform().mainQueue->after(relockDelay, finishRelock);
}

/// Relocks the lock screen here, or has the home-screen process do it by posting `request`.
void relockUIOrPost(std::string_view request) {
  if (SNUtils::isIOS12() && !SNUtils::isSpringBoard())
    SNUtils::postDarwinNotification(request);
  else
    relockUI();
}

/// The last resort: ends the application and puts it back behind the scenes.
void restartInBackground(const std::string& bundleIdentifier) {
  const Platform& platform = currentPlatform();
  if (platform.backBoard)
    platform.backBoard->terminateApplication(bundleIdentifier, terminationReason, /*report=*/false);
  if (platform.springBoard && platform.springBoard->launchApplicationWithIdentifier)
    platform.springBoard->launchApplicationWithIdentifier(bundleIdentifier, /*suspended=*/true);
}

/// With the home screen itself at the front there is nothing to suspend, but home can be pressed:
/// so it is where nobody tells what is at the front.
void suspendByApplicationObjects() {
  const Platform& platform = currentPlatform();
  const auto& springBoard = platform.springBoard;
  const bool canTellFront = springBoard && springBoard->_accessibilityFrontMostApplication;
  const auto front = canTellFront ? springBoard->_accessibilityFrontMostApplication() : nullptr;
  const auto& controller = platform.applicationController;
  if (canTellFront && controller && controller->suspendApplicationWithBundleIdentifier) {
    if (front) controller->suspendApplicationWithBundleIdentifier(front->bundleIdentifier());
  } else if (springBoard && springBoard->_simulateHomeButtonPress) {
    springBoard->_simulateHomeButtonPress();
  } else if (front) {
    restartInBackground(front->bundleIdentifier());
  }
}

}  // namespace

void SNUtils::lockUI() {
  if (!lockByPasscodeManager()) relockUIOrPost(notifications::lockUI);
}

void SNUtils::lockUI(bool force) {
  if (force)
    relockUIOrPost(notifications::forceLockUI);
  else
    lockUI();
}

void SNUtils::suspendFrontMostApp() {
  if (!isSpringBoard()) return void(ask<messages::SuspendFrontMostApp>());
  const auto framework =
      currentPlatform().libraries->open(std::string(springBoardServices), Binding::now);
  void* suspend = framework ? framework->symbol("SBSSuspendFrontmostApplication") : nullptr;
  if (suspend)
    reinterpret_cast<void (*)()>(suspend)();
  else
    suspendByApplicationObjects();
}

void SNUtils::reboot() {
  currentPlatform().spawner->spawn("/usr/sbin/reboot", {"reboot"});
}

}  // namespace sentrel
