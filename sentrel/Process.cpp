#include "sentrel/Process.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/authui/SNSimplePasscodeView.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/BridgeState.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIScreen.h"

namespace sentrel {
namespace {

std::atomic<Process*> mainProcess = nullptr;

// Every call of a shared operation reads this. With the model for what is there when the program
// starts, that is one load, also for a library; one pointer fits the room that is left for those
// loaded later.
constinit thread_local Process* scopedProcess __attribute__((tls_model("initial-exec"))) = nullptr;

}  // namespace

/// Hands the settings the controller's sessions, though the controller itself needs the settings:
/// neither is made before it is first used.
class Process::LateSessions final : public UnlockSessions {
 public:
  explicit LateSessions(Process& process) : process_(process) {}

  bool shouldIgnoreAuthentication(const SessionItem& item) override {
    return process_.controller().shouldIgnoreAuthentication(item);
  }

 private:
  Process& process_;
};

Process::Process(Platform platform)
    : platform_(std::move(platform)),
      isSpringBoard_(platform_.mainBundle->bundleIdentifier() == springBoardBundleIdentifier),
      sessions_(std::make_unique<LateSessions>(*this)) {}

Process::~Process() {
  Process* self = this;
  mainProcess.compare_exchange_strong(self, nullptr);
}

Process& Process::current() {
  if (scopedProcess) return *scopedProcess;
  if (Process* process = mainProcess.load(std::memory_order_acquire)) return *process;
  std::fputs("sentrel: the library was used before a Process was made for it\n", stderr);
  std::abort();
}

void Process::setMain(Process* process) noexcept {
  mainProcess.store(process, std::memory_order_release);
}

Process::Scope::Scope(Process& process) noexcept
    : previous_(std::exchange(scopedProcess, &process)) {}

Process::Scope::~Scope() {
  scopedProcess = previous_;
}

UIApplication& Process::application() {
  return application_.get([] { return std::make_shared<UIApplication>(); });
}

SNSettings& Process::settings() {
  return settings_.get(
      [this] { return std::make_shared<SNSettings>(platform_, *sessions_, wifiManager()); });
}

SNWiFiManager& Process::wifiManager() {
  return wifiManager_.get([this] { return std::make_shared<SNWiFiManager>(platform_); });
}

SentrelController& Process::controller() {
  return controller_.get([this] { return SentrelController::makeShared(platform_, settings()); });
}

const std::shared_ptr<SNTouchIDManager>& Process::touchIDManager() {
  return touchIDManager_.share([this] { return SNTouchIDManager::makeShared(platform_); });
}

std::shared_ptr<BiometricObserver> Process::biometricMonitor() {
  return touchIDManager();
}

const BridgeSettings& Process::bridgeSettings() {
  return settings();
}

BridgeState& Process::bridgeState() {
  return bridgeState_.get([this] { return std::make_shared<BridgeState>(platform_); });
}

const std::shared_ptr<SNSimplePasscodeView>& Process::simplePasscodeView() {
  return simplePasscodeView_.share([] { return SNSimplePasscodeView::initWithFrame({}); });
}

const std::shared_ptr<SNAuthenticationView>& Process::authenticationView() {
  return authenticationView_.share([] { return SNAuthenticationView::initWithFrame(); });
}

const std::shared_ptr<SNAuthenticationViewController>& Process::authenticationViewController() {
  return authenticationViewController_.share(
      [] { return SNAuthenticationViewController::makeShared(); });
}

const std::shared_ptr<SNWindow>& Process::overlayWindow() {
  return overlayWindow_.share(
      [] { return SNWindow::initWithFrame(UIScreen::mainScreen().bounds()); });
}

}  // namespace sentrel
