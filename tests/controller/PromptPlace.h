#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "device/simulated/SimulatedDevice.h"
#include "sentrel/authui/SNAlertController.h"
#include "sentrel/authui/SNAlertView.h"
#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/controller/SentrelController.h"
#include "tests/controller/PromptLedger.h"
#include "tests/support/PromptDriver.h"

namespace sentrel {

/// One process that prompts, its windows, and the ledger that watches it. Whatever is done with it
/// is done inside its process.
class PromptPlace {
 public:
  using Succeeded = std::function<void(const std::string& key)>;

  /// The presenter that is the overlay window, and that of a prompt where touch is forced.
  static constexpr std::int64_t overAll = 2;
  static constexpr std::int64_t byTouch = 3;

  static constexpr const char* passcode = "135790";
  /// How long the row shows the last digit before the passcode is looked at.
  static constexpr double passcodeSeconds = 0.15;

  PromptPlace(simulated::SimulatedDevice& device, std::string identifier, Succeeded succeeded)
      : device_(device), identifier_(std::move(identifier)), succeeded_(std::move(succeeded)) {
    process_ = device.launch(identifier_);
  }
  ~PromptPlace() {
    Process::Scope scope(process_->process());
    windows_ = {};
  }

  const std::string& identifier() const { return identifier_; }
  PromptLedger& ledger() { return ledger_; }
  auto weakProcess() const { return process_->weakProcess(); }
  Platform& platform() { return process_->process().platform(); }

  template <class Action>
  decltype(auto) run(Action action) {
    return process_->run(std::move(action));
  }

  void moveIn() {
    SNSettings::sharedSettings().reloadSettings();
    for (auto& window : windows_) {
      window = std::make_shared<UIWindow>(device_.screen().bounds());
      window->setRootViewController(std::make_shared<UIViewController>());
      window->setHidden(false);
    }
    windows_[overAll] = SNWindow::sharedInstance();
    // Before the monitor does: what the home screen relays is expected first.
    relayed_ = platform().distributedCenter->addObserver(
        std::string(notifications::pearlID), [this](const Notification& notification) {
          expect(find(*notification.userInfo, notifications::pearlIDEventCodeKey)->integerValue());
        });
  }

  void forget() {
    controller().setInvocation(nullptr);
    ledger_ = PromptLedger();
    askers_.clear();
  }

  void request(std::int64_t presenter) {
    const bool isPasscodeAlone = SNSettings::sharedSettings().shouldUsePasscodeOnly();
    const std::size_t number = ledger_.ask(isPasscodeAlone && presenter != byTouch);
    const std::string key = "request " + std::to_string(asked_++) + " of " + identifier_;
    const auto completion = [=, this](bool authenticated, bool allowed) {
      ledger_.end(number, authenticated, allowed, now());
      if (authenticated && presenter != byTouch) succeeded_(key);
    };
    const auto& root =
        windows_.at(static_cast<std::size_t>(presenter) % windows_.size())->rootViewController();
    if (presenter == overAll)
      controller().requiresAuthentication(key, "please", completion);
    else if (presenter == byTouch)
      controller().showAuthenticationViewController(key, "please", /*forceTouch=*/true, root,
                                                    completion);
    else
      controller().requiresAuthentication(key, "please", root, completion);
    // Behind what was queued just now. One over all takes a turn longer.
    const auto begin = [this, number] { ledger_.begin(number); };
    later(presenter == overAll ? MainQueue::Block([this, begin] { later(begin); }) : begin);
  }

  void defer() {
    const std::size_t number = ledger_.defer();
    controller().setInvocation(
        std::make_shared<Deferred>([this, number] { ledger_.run(number, now()); }));
  }

  /// A report comes though the sensor may not be listened to.
  void hear(BiometricEvent event) {
    if (!isInPasscodeMode()) mayFollow(event);
    controller().biometricKitInterfaceHandleEvent(nullptr, event);
  }

  /// The sensor's report is the next to be heard, by whoever listens then.
  void expectNext(BiometricEvent event) {
    later([this, event] { expect(event); });
  }

  void tapSwitch() {
    if (const auto alert = presentedAlert())
      tapAction(*alert, UIAlertActionStyle::standard);
    else if (const auto legacy = shownLegacyAlert())
      legacy->tap(1);
  }

  void tapCancel() {
    if (const auto prompt = promptOnScreen()) ledger_.mayBeCancelled(askerOf(prompt));
    if (const auto alert = presentedAlert())
      tapAction(*alert, UIAlertActionStyle::cancel);
    else if (const auto legacy = shownLegacyAlert())
      legacy->tap(0);
  }

  void typeDigits(std::string_view digits) {
    if (focusedField() && digits == passcode)
      ledger_.provenAt(now() + passcodeSeconds, PromptLedger::Proof::passcode);
    type(digits);
  }

  /// A lock or a dimmed screen ends the request whose prompt is known to be on screen, and rests
  /// the sensor.
  void interrupt(void (SentrelController::*interruption)()) {
    const bool wasShowing = controller().isAlertShowing();
    ledger_.mayFailAt(now());
    (controller().*interruption)();
    if (wasShowing && controller().completionBlock())
      ledger_.complain("a prompt outlived a lock or a dimmed screen");
    if (isHeld()) ledger_.complain("the sensor outlived a lock or a dimmed screen");
  }

  void look() {
    std::size_t prompts = 0;
    for (const auto& window : windows_) {
      if (!window->rootViewController()->presentedViewController()) continue;
      ++prompts;
      if (window->isHidden()) ledger_.complain("a prompt is in a window that is hidden");
    }
    if (isLegacy() && prompts > 0) ledger_.complain("a prompt of the wrong kind is on screen");
    if (isLegacy() && shownLegacyAlert()) ++prompts;
    if (prompts > 0) askerOf(promptOnScreen());
    if (prompts > 1) ledger_.complain("two prompts are on screen");
    if (prompts > 0 && !controller().completionBlock())
      ledger_.complain("a prompt is on screen that nobody owns");
  }

  void comeToRest() {
    ledger_.comeToRest();
    if (promptOnScreen()) ledger_.complain("a prompt cannot be cancelled");
    if (isHeld()) ledger_.complain("the sensor was not given back");
    if (focusedField()) ledger_.complain("the keyboard stayed up");
  }

  static SentrelController& controller() { return SentrelController::sharedInstance(); }

 private:
  class Deferred final : public Invocation {
   public:
    explicit Deferred(std::function<void()> run) : run_(std::move(run)) {}
    std::optional<std::string> argumentBundleIdentifier() const override { return std::nullopt; }
    void invoke() override { run_(); }

   private:
    std::function<void()> run_;
  };

  void later(MainQueue::Block block) { platform().mainQueue->async(std::move(block)); }

  /// Which request the prompt was first seen for.
  std::size_t askerOf(const std::shared_ptr<UIResponder>& prompt) {
    return askers_.emplace(prompt, ledger_.begun()).first->second;
  }

  void expect(BiometricEvent event) {
    if (isHeld() && !isInPasscodeMode()) mayFollow(event);
  }

  /// What may come of a report that counts, once the glyph has shown it.
  void mayFollow(BiometricEvent event) {
    if (!ledger_.takesTouch()) return;
    const double moment = now() + glyphSeconds();
    if (event == 3) ledger_.provenAt(moment, PromptLedger::Proof::match);
    if (event == 6) ledger_.mayFailAt(moment);
  }

  static void tapAction(SNAlertController& alert, UIAlertActionStyle style) {
    for (const auto& action : alert.actions())
      if (action->style() == style) return alert.tap(action);
  }

  bool isLegacy() const { return device_.system().canUseAlertView; }

  static bool isHeld() { return SNTouchIDManager::sharedManager()->isRunning(); }

  bool isInPasscodeMode() const {
    const auto mode =
        isLegacy() ? SNAuthenticationView::sharedInstance()->currentAuthenticationMode()
                   : SNAuthenticationViewController::sharedInstance()->currentAuthenticationMode();
    return mode == SNAuthenticationModePasscode &&
           (!isLegacy() || controller().alertController() != nullptr);
  }

  std::shared_ptr<SNAlertController> presentedAlert() const {
    for (const auto& window : windows_)
      if (auto alert = std::dynamic_pointer_cast<SNAlertController>(
              window->rootViewController()->presentedViewController()))
        return alert;
    return nullptr;
  }

  static std::shared_ptr<SNAlertView> shownLegacyAlert() {
    auto alert = std::dynamic_pointer_cast<SNAlertView>(controller().alertController());
    return alert && alert->isVisible() ? alert : nullptr;
  }

  std::shared_ptr<UIResponder> promptOnScreen() const {
    if (const auto alert = presentedAlert()) return alert;
    return shownLegacyAlert();
  }

  /// How long the glyph takes to show an event, before anything follows from it.
  double glyphSeconds() const {
    return isLegacy() ? 0.1 : PKGlyphViewClass().stateAnimationDuration.count();
  }

  double now() const { return device_.time().now().time_since_epoch().count(); }

  simulated::SimulatedDevice& device_;
  const std::string identifier_;
  const Succeeded succeeded_;
  std::unique_ptr<simulated::SimulatedProcess> process_;
  /// Those of the presenters, and the overlay window.
  std::array<std::shared_ptr<UIWindow>, 3> windows_;
  PromptLedger ledger_;
  Observation relayed_;
  std::map<std::weak_ptr<UIResponder>, std::size_t, std::owner_less<>> askers_;
  std::size_t asked_ = 0;
};

}  // namespace sentrel
