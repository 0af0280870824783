#pragma once

#include <array>
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
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SettingsKeys.h"
#include "sentrel/watch/WatchMessages.h"
#include "tests/controller/PromptLedger.h"
#include "tests/controller/PromptOrder.h"
#include "tests/support/PromptDriver.h"

namespace sentrel {

struct PromptPhoneKind {
  const char* system;
  bool hasFaceID;
  bool isLegacy;
  bool isPasscodeOnly;
};

/// A phone that lives through orders of happenings, and a ledger that watches it. The home screen
/// itself is the sensor's owner while no prompt is on screen.
class PromptPhone {
 public:
  explicit PromptPhone(const PromptPhoneKind& kind) : kind_(kind) {
    device_.system().version = kind.system;
    device_.system().connectedScenes = kind.isLegacy ? 0 : 1;
    device_.system().canUseAlertView = kind.isLegacy;
    device_.sensor().isPearlIDCapable = kind.hasFaceID;
    device_.sensor().isTouchIDCapable = !kind.hasFaceID;
    springBoard_ = device_.launch(std::string(springBoardBundleIdentifier));
    daemon_ = device_.launch("com.apple.sharingd");
    device_.xpc().serve("com.apple.sharingd.nsxpc", daemon_->weakProcess(),
                        [this](const auto& message) { answerAboutWatch(message); });
    springBoard_->run([&] { moveIn(); });
  }

  /// Lives through `order` and what comes of it; answers the first thing that must never happen.
  std::optional<std::string> live(const PromptOrder& order) {
    Process::Scope inside(springBoard_->process());
    ledger_ = PromptLedger();
    askers_.clear();
    const auto sessionsBefore = controller().unlockSessionCache();
    watchAnswers_ = 0;
    for (const Happening& happening : order) {
      happen(happening);
      if (happening.kind == Happening::Kind::wait)
        pass(static_cast<double>(happening.number) / 100);
    }
    comeToRest();
    std::set<std::string> recorded;
    for (const auto& [key, time] : controller().unlockSessionCache())
      if (!sessionsBefore.contains(key)) recorded.insert(std::string(*key.item().text()));
    if (recorded != expectedSessions())
      ledger_.complain("the sessions are not those of the successes");
    ++lives_;
    return ledger_.complaint();
  }

 private:
  using Kind = Happening::Kind;

  class Owner final : public BiometricObserver {
   public:
    std::string description() const override { return "the home screen"; }
  };

  void moveIn() {
    device_.files().put(std::string(settingsFilePath),
                        {{"SentrelEnabled", true},
                         {"SentrelRemember", true},
                         {"SentrelRememberTime", 5},
                         {"SentrelUnlockWithWatch", true},
                         {"SentrelUsePasscodeOnly", kind_.isPasscodeOnly}});
    SNSettings& settings = SNSettings::sharedSettings();
    settings.savePasscode(passcode);
    settings.reloadSettings();
    for (auto& window : windows_) {
      window = std::make_shared<UIWindow>(device_.screen().bounds());
      window->setRootViewController(std::make_shared<UIViewController>());
      window->setHidden(false);
    }
    windows_.at(overAll) = SNWindow::sharedInstance();
    if (const auto interface = sensorInterface()) interface->setDelegate(owner_);
    if (const auto& monitor = platform().biometricEventMonitor) monitor->addObserver(owner_);
    SNTouchIDManager::sharedManager();
  }

  void happen(const Happening& happening) {
    switch (happening.kind) {
      case Kind::request:
        return request(happening.number);
      case Kind::event:
        return sense(happening.number);
      case Kind::lateEvent:
        return hearLate(happening.number);
      case Kind::tapSwitch:
        return tapSwitch();
      case Kind::tapCancel:
        return tapCancel();
      case Kind::typeRight:
        return typeDigits(passcode);
      case Kind::typeWrong:
        return typeDigits("000000");
      case Kind::lock:
        return interrupt([&] { controller().deviceLocked(); });
      case Kind::dim:
        return interrupt([&] { controller().deviceScreenDimmed(); });
      case Kind::watchAnswers:
        watchAnswers_ = happening.number;
        return;
      case Kind::wait:
        return;
    }
  }

  void request(std::int64_t presenter) {
    // A request over all takes a turn longer to begin: it has turns of its own.
    const bool isOverAll = static_cast<std::size_t>(presenter) == overAll;
    if (isOverAll) pass(0);
    const std::size_t number = ledger_.ask();
    const auto completion = [this, number](bool authenticated, bool allowed) {
      ledger_.end(number, authenticated, allowed, now());
    };
    if (isOverAll) {
      controller().requiresAuthentication(keyOf(number), "please", completion);
      return pass(0);
    }
    controller().requiresAuthentication(
        keyOf(number), "please",
        windows_.at(static_cast<std::size_t>(presenter))->rootViewController(), completion);
  }

  /// What the sensor reports reaches whoever listens within the turn.
  void sense(std::int64_t event) {
    pass(0);
    if (event == 3 && isHeld() && !isInPasscodeMode()) ledger_.provenAt(now() + glyphSeconds());
    if (event == 6) ledger_.mayFailAt(now() + glyphSeconds());
    device_.sensor().emit(event);
    pass(0);
  }

  void hearLate(std::int64_t event) {
    if (event == 3 && !isInPasscodeMode()) ledger_.provenAt(now() + glyphSeconds());
    if (event == 6) ledger_.mayFailAt(now() + glyphSeconds());
    controller().biometricKitInterfaceHandleEvent(nullptr, event);
  }

  void tapSwitch() {
    if (const auto alert = presentedAlert())
      tapAction(*alert, UIAlertActionStyle::standard);
    else if (const auto legacy = shownLegacyAlert())
      legacy->tap(1);
  }

  void tapCancel() {
    if (const auto asker = askers_.find(promptOnScreen()); asker != askers_.end())
      ledger_.mayBeCancelled(asker->second);
    if (const auto alert = presentedAlert())
      tapAction(*alert, UIAlertActionStyle::cancel);
    else if (const auto legacy = shownLegacyAlert())
      legacy->tap(0);
  }

  static void tapAction(SNAlertController& alert, UIAlertActionStyle style) {
    for (const auto& action : alert.actions())
      if (action->style() == style) return alert.tap(action);
  }

  void typeDigits(std::string_view digits) {
    if (!focusedField()) return;
    if (digits == passcode) ledger_.provenAt(now() + passcodeSeconds);
    for (const char digit : digits)
      if (const auto field = focusedField()) field->insertText(std::string(1, digit));
  }

  /// A lock or a dimmed screen ends the request whose prompt is on screen, and rests the sensor.
  template <class Action>
  void interrupt(Action action) {
    const bool wasShowing = controller().isAlertShowing();
    ledger_.mayFailAt(now());
    action();
    if (wasShowing && controller().completionBlock())
      ledger_.complain("a prompt outlived a lock or a dimmed screen");
    if (isHeld()) ledger_.complain("the sensor outlived a lock or a dimmed screen");
  }

  void answerAboutWatch(const std::shared_ptr<XpcMessage>& message) {
    ledger_.watchAsked();
    if (watchAnswers_ == 0) return message->reply({{"result", PropertyList::Dictionary()}});
    const auto agree = [this, message] {
      ledger_.watchAgrees();
      message->reply({{"result", PropertyList::Dictionary{{std::string(watch::wristStateKey), 3},
                                                          {std::string(watch::lockStateKey), 0},
                                                          {std::string(watch::nearbyKey), true},
                                                          {std::string(watch::activeKey), true},
                                                          {std::string(watch::connectedKey), true},
                                                          {std::string(watch::rssiKey), -40}}}});
    };
    if (watchAnswers_ == 1) return agree();
    device_.time().after(Seconds(0.7), agree);
  }

  /// Lets time pass, and looks at what is on screen then.
  void pass(double seconds) {
    device_.time().advance(Seconds(0));
    ledger_.turnIsOver();
    look();
    if (seconds <= 0) return;
    device_.time().advance(Seconds(seconds));
    look();
  }

  void look() {
    std::size_t prompts = 0;
    for (const auto& window : windows_) {
      if (!window->rootViewController()->presentedViewController()) continue;
      ++prompts;
      if (window->isHidden()) ledger_.complain("a prompt is in a window that is hidden");
    }
    if (kind_.isLegacy && prompts > 0) ledger_.complain("a prompt of the wrong kind is on screen");
    if (kind_.isLegacy && shownLegacyAlert()) ++prompts;
    if (prompts > 0) askers_.emplace(promptOnScreen(), ledger_.current());
    if (prompts > 1) ledger_.complain("two prompts are on screen");
    if (prompts > 0 && !controller().completionBlock())
      ledger_.complain("a prompt is on screen that nobody owns");
  }

  /// Waits for everything that is under way, and cancels a prompt that is left.
  void comeToRest() {
    pass(0);
    pass(10);
    tapCancel();
    pass(10);
    if (ledger_.isInProgress(ledger_.current())) ledger_.complain("a request never ended");
    if (controller().isAlertShowing()) ledger_.complain("a prompt cannot be cancelled");
    if (isHeld() || !ownerHasSensor()) ledger_.complain("the sensor was not given back");
    if (focusedField()) ledger_.complain("the keyboard stayed up");
  }

  bool ownerHasSensor() {
    const bool ownDelegate = !sensorInterface() || sensorInterface()->delegate() == owner_;
    const auto& monitor = platform().biometricEventMonitor;
    const bool ownObserver =
        !monitor || monitor->observers() == std::vector<std::shared_ptr<BiometricObserver>>{owner_};
    return ownDelegate && ownObserver && device_.sensor().assertions().empty();
  }

  std::shared_ptr<BiometricInterface> sensorInterface() {
    const auto& resource = platform().biometricResource;
    return resource ? resource->_biometricKitInterface() : nullptr;
  }

  static bool isHeld() { return SNTouchIDManager::sharedManager()->isRunning(); }

  bool isInPasscodeMode() {
    const auto mode =
        kind_.isLegacy
            ? SNAuthenticationView::sharedInstance()->currentAuthenticationMode()
            : SNAuthenticationViewController::sharedInstance()->currentAuthenticationMode();
    return mode == SNAuthenticationModePasscode &&
           (!kind_.isLegacy || controller().alertController() != nullptr);
  }

  std::shared_ptr<SNAlertController> presentedAlert() {
    for (const auto& window : windows_)
      if (auto alert = std::dynamic_pointer_cast<SNAlertController>(
              window->rootViewController()->presentedViewController()))
        return alert;
    return nullptr;
  }

  std::shared_ptr<SNAlertView> shownLegacyAlert() {
    auto alert = std::dynamic_pointer_cast<SNAlertView>(controller().alertController());
    return alert && alert->isVisible() ? alert : nullptr;
  }

  std::shared_ptr<UIResponder> promptOnScreen() {
    if (const auto alert = presentedAlert()) return alert;
    return shownLegacyAlert();
  }

  std::string keyOf(std::size_t request) const {
    return "life " + std::to_string(lives_) + ", " + PromptLedger::key(request);
  }

  std::set<std::string> expectedSessions() const {
    std::set<std::string> keys;
    for (const std::size_t request : ledger_.succeeded())
      keys.insert(keyOf(request));
    return keys;
  }

  /// How long the glyph takes to show an event, before anything follows from it.
  double glyphSeconds() const {
    return kind_.isLegacy ? 0.1 : PKGlyphViewClass().stateAnimationDuration.count();
  }

  static SentrelController& controller() { return SentrelController::sharedInstance(); }
  Platform& platform() { return springBoard_->process().platform(); }
  double now() { return device_.time().now().time_since_epoch().count(); }

  static constexpr const char* passcode = "135790";
  /// How long the row shows the last digit before the passcode is looked at.
  static constexpr double passcodeSeconds = 0.15;

  PromptPhoneKind kind_;
  simulated::SimulatedDevice device_;
  std::shared_ptr<Owner> owner_ = std::make_shared<Owner>();
  std::unique_ptr<simulated::SimulatedProcess> springBoard_;
  std::unique_ptr<simulated::SimulatedProcess> daemon_;
  /// Those of the presenters, and the overlay window.
  static constexpr std::size_t overAll = 2;
  std::array<std::shared_ptr<UIWindow>, 3> windows_;
  PromptLedger ledger_;
  /// Which request each prompt was first seen for.
  std::map<std::weak_ptr<UIResponder>, std::size_t, std::owner_less<>> askers_;
  std::int64_t watchAnswers_ = 0;
  std::size_t lives_ = 0;
};

}  // namespace sentrel
