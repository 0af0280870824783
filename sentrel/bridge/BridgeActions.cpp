#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/platform/Answer.h"

namespace sentrel {
namespace {

using Binding = DynamicLibraries::Binding;

constexpr Seconds relockDelay(0.2);
constexpr int buttonSource = 1;
constexpr int terminationReason = 5;
constexpr std::string_view springBoardServices =
    "/System/Library/PrivateFrameworks/SpringBoardServices.framework/SpringBoardServices";

void finishRelock(const Platform& platform) {
  const auto& manager = platform.lockScreenManager;
  perform(manager, &SBLockScreenManager::lockUIFromSource, buttonSource);
  perform(manager,
          &SBLockScreenManager::homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown,
          /*shown=*/false);
}

}  // namespace

/// Whether the device was unlocked and could be locked by the keeper of its passcode.
bool Bridge::lockByPasscodeManager() {
  const auto& manager = platform_.passcodeManager;
  if (!manager || !manager->lockDevice) return false;
  return answer(manager, &MCPasscodeManager::isDeviceUnlocked).orElse(/*fallback=*/false) &&
         perform(manager, &MCPasscodeManager::lockDevice);
}

void Bridge::relockUI() {
  const auto& manager = platform_.lockScreenManager;
  if (!perform(manager, &SBLockScreenManager::_relockUIForButtonPress, /*buttonPress=*/true,
               /*afterCall=*/false) &&
      !perform(manager, &SBLockScreenManager::_relockUIForButtonlikeSource,
               /*buttonlikeSource=*/true, /*afterCall=*/false))
    logMessage("NO API Available to lock the Device **********");
  platform_.mainQueue->after(relockDelay, [&platform = platform_] { finishRelock(platform); });
}

/// Relocks the lock screen here, or has the home-screen process do it by posting `request`.
void Bridge::relockUIOrPost(std::string_view request) {
  if (isIOS12() && !isSpringBoard())
    postDarwinNotification(request);
  else
    relockUI();
}

/// The last resort: ends the application and puts it back behind the scenes.
void Bridge::restartInBackground(const std::string& bundleIdentifier) {
  if (platform_.backBoard)
    platform_.backBoard->terminateApplication(bundleIdentifier, terminationReason,
                                              /*report=*/false);
  perform(platform_.springBoard, &SpringBoardApplication::launchApplicationWithIdentifier,
          bundleIdentifier, /*suspended=*/true);
}

/// With the home screen itself at the front there is nothing to suspend, but home can be pressed:
/// so it is where nobody tells what is at the front.
void Bridge::suspendByApplicationObjects() {
  const auto& springBoard = platform_.springBoard;
  const auto told =
      answer(springBoard, &SpringBoardApplication::_accessibilityFrontMostApplication);
  const auto front = told.orElse(nullptr);
  const auto& controller = platform_.applicationController;
  if (told && controller && controller->suspendApplicationWithBundleIdentifier) {
    if (front) controller->suspendApplicationWithBundleIdentifier(front->bundleIdentifier());
  } else if (!perform(springBoard, &SpringBoardApplication::_simulateHomeButtonPress) && front) {
    restartInBackground(front->bundleIdentifier());
  }
}

void Bridge::lockUI() {
  if (!lockByPasscodeManager()) relockUIOrPost(notifications::lockUI);
}

void Bridge::lockUI(bool force) {
  if (force)
    relockUIOrPost(notifications::forceLockUI);
  else
    lockUI();
}

void Bridge::suspendFrontMostApp() {
  if (!isSpringBoard()) return void(ask<messages::SuspendFrontMostApp>(*this));
  const auto framework = platform_.libraries->open(std::string(springBoardServices), Binding::now);
  void* suspend = framework ? framework->symbol("SBSSuspendFrontmostApplication") : nullptr;
  if (suspend)
    reinterpret_cast<void (*)()>(suspend)();
  else
    suspendByApplicationObjects();
}

void Bridge::reboot() {
  platform_.spawner->spawn("/usr/sbin/reboot", {"reboot"});
}

}  // namespace sentrel
