#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "device/simulated/SimulatedDevice.h"
#include "host/BiometricEventRelay.h"
#include "host/SpringBoardObservers.h"
#include "host/SpringBoardResponder.h"
#include "sentrel/bridge/Messages.h"
#include "sentrel/settings/SettingsKeys.h"
#include "sentrel/watch/WatchMessages.h"
#include "tests/controller/PromptOrder.h"
#include "tests/controller/PromptPlace.h"

namespace sentrel {

struct PromptPhoneKind {
  const char* system;
  bool hasFaceID;
  bool isLegacy;
  bool isPasscodeOnly;

  /// "System14Face": what its tests are called.
  std::string name() const {
    return "System" + std::to_string(std::atoi(system)) + (hasFaceID ? "Face" : "Finger") +
           (isLegacy ? "Legacy" : "") + (isPasscodeOnly ? "PasscodeOnly" : "");
  }
  friend void PrintTo(const PromptPhoneKind& kind, std::ostream* out) { *out << kind.name(); }
};

/// A phone with a home screen, an application of the system and another one, that lives through
/// orders of happenings. The home screen itself is the sensor's owner while no prompt is on screen.
class PromptPhone {
 public:
  static constexpr std::size_t places = 3;

  explicit PromptPhone(const PromptPhoneKind& kind) : isPasscodeOnly_(kind.isPasscodeOnly) {
    device_.system().version = kind.system;
    device_.system().connectedScenes = kind.isLegacy ? 0 : 1;
    device_.system().canUseAlertView = kind.isLegacy;
    device_.sensor().isPearlIDCapable = kind.hasFaceID;
    device_.sensor().isTouchIDCapable = !kind.hasFaceID;
    device_.applications().install({.bundleIdentifier = "com.apple.app", .isSystem = true});
    device_.xpc().serve("com.apple.sharingd.nsxpc", daemon_->weakProcess(),
                        [this](const auto& message) { answerAboutWatch(message); });
    returnHomeScreen();
    places_[1] = launch("com.apple.app");
    places_[2] = launch("com.example.app");
  }

  /// Lives through `order` and what comes of it; answers the first thing that must never happen.
  std::optional<std::string> live(const PromptOrder& order) {
    forEach([](PromptPlace& place) { place.forget(); });
    device_.xpc().forgetSent();
    watchQueries_ = 0;
    watchAnswers_ = 0;
    expected_.clear();
    sessions_ = home().run([] { return PromptPlace::controller().unlockSessionCache().size(); });
    complaint_.reset();
    for (auto next = order.begin(); next != order.end();)
      next = liveTurn(next, order.end());
    comeToRest();
    forEach([this](PromptPlace& place) { noteComplaint(place); });
    return complaint_;
  }

 private:
  using Kind = Happening::Kind;
  using Observer = std::shared_ptr<BiometricObserver>;

  class Owner final : public BiometricObserver {
   public:
    std::string description() const override { return "the home screen"; }
  };

  // --- Processes ---------------------------------------------------------------------------------

  std::shared_ptr<PromptPlace> launch(const char* identifier) {
    auto place = std::make_shared<PromptPlace>(device_, identifier, [this](const std::string& key) {
      if (places_[0]) expected_.insert(key);
    });
    place->run([&] { place->moveIn(); });
    return place;
  }

  void returnHomeScreen() {
    device_.files().put(std::string(settingsFilePath),
                        {{"SentrelEnabled", true},
                         {"SentrelRemember", true},
                         {"SentrelRememberTime", 5},
                         {"SentrelUnlockWithWatch", true},
                         {"SentrelUsePasscodeOnly", isPasscodeOnly_}});
    places_[0] = launch(springBoardBundleIdentifier.data());
    home().run([this] {
      SNSettings::sharedSettings().savePasscode(PromptPlace::passcode);
      SNSettings::sharedSettings().reloadSettings();
      if (const auto interface = sensorInterface()) interface->setDelegate(owner_);
      if (const auto& monitor = home().platform().biometricEventMonitor)
        monitor->addObserver(owner_);
      observers_.emplace();
      relay_.emplace();
    });
    device_.messages().setResponder(std::string(messageChannelName), home().weakProcess(),
                                    host::SpringBoardResponder({}));
    sessions_ = 0;
  }

  void loseHomeScreen() {
    noteComplaint(home());
    home().run([this] {
      observers_.reset();
      relay_.reset();
    });
    places_[0].reset();
    // What a process holds of the sensor goes with it.
    for (const auto& assertion : std::vector(device_.sensor().assertions()))
      device_.sensor().release(assertion);
    expected_.clear();
  }

  PromptPlace& home() { return *places_[0]; }

  template <class Action>
  void forEach(Action action) {
    for (const auto& place : places_)
      if (place) place->run([&] { action(*place); });
  }

  void noteComplaint(PromptPlace& place) {
    if (const auto& complaint = place.ledger().complaint(); complaint && !complaint_)
      complaint_ = place.identifier() + ": " + *complaint;
  }

  // --- What happens ------------------------------------------------------------------------------

  /// Waits as the first of the happenings says, and has those that follow it happen in one turn.
  PromptOrder::const_iterator liveTurn(PromptOrder::const_iterator first,
                                       PromptOrder::const_iterator end) {
    const auto isWait = [](const Happening& it) {
      return it.kind == Kind::wait || it.kind == Kind::meet;
    };
    const auto behind = isWait(*first) ? first + 1 : first;
    const auto last = std::find_if(behind, end, isWait);
    const Seconds wait(isWait(*first) ? static_cast<double>(first->number) / 100 : 0);
    const auto act = [=, this] {
      std::for_each(behind, last, [this](const Happening& it) { happen(it); });
      forEach([](PromptPlace& place) { place.ledger().endTurn(); });
    };
    if (first->kind == Kind::meet) device_.time().after(wait, act);
    pass(wait);
    if (first->kind != Kind::meet) act();
    return last;
  }

  void happen(const Happening& happening) {
    switch (happening.kind) {
      case Kind::event:
        return sense(happening.number);
      case Kind::lock:
        return forEach([](auto& place) { place.interrupt(&SentrelController::deviceLocked); });
      case Kind::dim:
        return forEach(
            [](auto& place) { place.interrupt(&SentrelController::deviceScreenDimmed); });
      case Kind::homeScreen:
        return places_[0] ? loseHomeScreen() : returnHomeScreen();
      case Kind::watchAnswers:
        watchAnswers_ = happening.number;
        return;
      default:
        if (const auto& place = places_.at(happening.place))
          place->run([&] { happenTo(*place, happening); });
    }
  }

  void happenTo(PromptPlace& place, const Happening& happening) {
    switch (happening.kind) {
      case Kind::request:
        return place.request(happening.number);
      case Kind::defer:
        return place.defer();
      case Kind::lateEvent:
        return place.hear(happening.number);
      case Kind::tapSwitch:
        return place.tapSwitch();
      case Kind::tapCancel:
        return place.tapCancel();
      case Kind::typeRight:
        return place.typeDigits(PromptPlace::passcode);
      case Kind::typeWrong:
        return place.typeDigits("000000");
      default:
        return;
    }
  }

  void sense(BiometricEvent event) {
    forEach([event](PromptPlace& place) { place.expectNext(event); });
    device_.sensor().emit(event);
  }

  void answerAboutWatch(const std::shared_ptr<XpcMessage>& message) {
    const std::string& sender = device_.xpc().sent().at(watchQueries_++).sender;
    const auto asker = std::ranges::find_if(
        places_, [&](const auto& place) { return place && place->identifier() == sender; });
    if (watchAnswers_ == 0 || asker == places_.end())
      return message->reply({{"result", PropertyList::Dictionary()}});
    const auto agree = [message, weak = std::weak_ptr(*asker),
                        request = (*asker)->ledger().begun()] {
      if (const auto place = weak.lock()) place->ledger().watchAgrees(request);
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
  void pass(Seconds time) {
    device_.time().advance(time);
    forEach([](PromptPlace& place) { place.look(); });
  }

  /// Waits for everything that is under way, and cancels the prompts that are left.
  void comeToRest() {
    pass(Seconds(0));
    if (!places_[0]) returnHomeScreen();
    pass(Seconds(10));
    forEach([](PromptPlace& place) { place.tapCancel(); });
    pass(Seconds(10));
    forEach([](PromptPlace& place) { place.comeToRest(); });
    home().run([this] {
      if (!ownerHasSensor()) home().ledger().complain("the sensor was not given back");
      const auto& recorded = home().controller().unlockSessionCache();
      bool isAsExpected = recorded.size() == sessions_ + expected_.size();
      for (const std::string& key : expected_)
        isAsExpected = isAsExpected && recorded.contains(SessionKey(key));
      if (!isAsExpected) home().ledger().complain("the sessions are not those of the successes");
    });
  }

  bool ownerHasSensor() {
    const bool ownDelegate = !sensorInterface() || sensorInterface()->delegate() == owner_;
    const auto& monitor = home().platform().biometricEventMonitor;
    const bool ownObserver = !monitor || monitor->observers() == std::vector<Observer>{owner_};
    return ownDelegate && ownObserver && !device_.sensor().isHeld();
  }

  std::shared_ptr<BiometricInterface> sensorInterface() {
    const auto& resource = home().platform().biometricResource;
    return resource ? resource->_biometricKitInterface() : nullptr;
  }

  const bool isPasscodeOnly_;
  simulated::SimulatedDevice device_;
  Observer owner_ = std::make_shared<Owner>();
  std::unique_ptr<simulated::SimulatedProcess> daemon_ = device_.launch("com.apple.sharingd");
  /// The home screen, null while it is lost, and the two applications.
  std::array<std::shared_ptr<PromptPlace>, places> places_;
  std::optional<host::SpringBoardObservers> observers_;
  std::optional<host::BiometricEventRelay> relay_;
  std::optional<std::string> complaint_;
  /// The keys of this order's successes that the home screen has to know, and how many it knew
  /// before them.
  std::set<std::string> expected_;
  std::size_t sessions_ = 0;
  std::size_t watchQueries_ = 0;
  std::int64_t watchAnswers_ = 0;
};

}  // namespace sentrel
