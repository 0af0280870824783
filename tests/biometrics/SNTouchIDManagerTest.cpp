#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Bridge.h"

#include <gmock/gmock.h>

#include <sstream>

#include "sentrel/authui/SNWindow.h"
#include "sentrel/bridge/SNUtils.h"
#include "tests/support/HomeScreenTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Interface = std::shared_ptr<BiometricInterface>;

/// Somebody else who uses the sensor; remembers what it was told, each event behind its kind.
class Owner final : public BiometricObserver {
 public:
  void biometricKitInterfaceHandleEvent(const Interface&, BiometricEvent event) override {
    note("handle ", event);
  }
  void biometricKitInterfaceObserveEvent(const Interface&, BiometricEvent event) override {
    note("observe ", event);
  }
  void biometricEventMonitorHandleBiometricEvent(const std::shared_ptr<SBUIBiometricEventMonitor>&,
                                                 BiometricEvent event) override {
    note("monitor ", event);
  }
  std::string description() const override { return "owner"; }

  std::vector<std::string> told;

 private:
  void note(const char* kind, BiometricEvent event) {
    told.push_back(kind + std::to_string(event));
  }
};

/// A home-screen process whose sensor somebody else uses: as a delegate on newer systems, as
/// observers on old ones.
class BiometricMonitor : public HomeScreenTest {
 protected:
  BiometricMonitor() { startSystem("14.0"); }

  void startSystem(const std::string& version, bool hasFaceID = true) {
    restart(version, hasFaceID);
    if (const Interface used = interface()) used->setDelegate(owner);
    if (const auto& monitor = platform().biometricEventMonitor) {
      for (const auto& observer : {first, second, third})
        monitor->addObserver(observer);
      platform().biometricKit->setDelegate(kitDelegate);
    }
    device.journal().take();
  }

  SNTouchIDManager& manager() { return *SNTouchIDManager::sharedManager(); }

  simulated::SimulatedBiometricResource* resource() {
    return static_cast<simulated::SimulatedBiometricResource*>(platform().biometricResource.get());
  }
  Interface interface() { return resource() ? resource()->_biometricKitInterface() : nullptr; }

  /// Has every block write down that it was called, and with what.
  void arm() {
    manager().setHandleEventBlock([this](const Interface& from, BiometricEvent event) {
      forwardedFrom = from;
      calls.push_back("handle " + std::to_string(event));
    });
    manager().setObserveEventBlock([this](const Interface&, BiometricEvent event) {
      calls.push_back("observe " + std::to_string(event));
    });
    manager().setManagerStarted(
        [this](bool running) { calls.push_back(running ? "started YES" : "started NO"); });
    manager().setManagerStopped(
        [this](bool running) { calls.push_back(running ? "stopped YES" : "stopped NO"); });
  }

  void sense(BiometricEvent event) {
    device.sensor().emit(event);
    device.time().runDue();
  }

  std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

  std::shared_ptr<Owner> owner = std::make_shared<Owner>();
  std::shared_ptr<Owner> first = std::make_shared<Owner>();
  std::shared_ptr<Owner> second = std::make_shared<Owner>();
  std::shared_ptr<Owner> third = std::make_shared<Owner>();
  Interface kitDelegate = simulated::makeBiometricInterface(device.sharedSensor(), 9);
  std::vector<std::string> calls;
  Interface forwardedFrom;
};

TEST_F(BiometricMonitor, CountsStartsAndStops) {
  // s starts, p stops, - takes the sensor away and + brings it back. After each of them: the
  // counter, and whether the monitor runs.
  struct Case {
    const char* script;
    const char* expected;
    std::vector<std::string> calls;
  };
  const Case cases[] = {{"sp", "1r 0- ", {"started YES", "stopped NO"}},
                        {"ssp", "1r 1r 0- ", {"started YES", "stopped NO"}},
                        {"pps", "0- 0- 1r ", {"started YES"}},
                        {"spp", "1r 0- 0- ", {"started YES", "stopped NO"}},
                        {"spsp", "1r 0- 1r 0- ", {"started YES", "stopped NO"}},
                        {"-s+sp", "0- 0- 0- 1r 0- ", {"started YES", "stopped NO"}},
                        {"s-p+p", "1r 1r 0r 0r 0- ", {"started YES", "stopped NO"}},
                        {"s-p+sp", "1r 1r 0r 0r 0r 0- ", {"started YES", "stopped NO"}}};
  for (const char* version : {"14.0", "10.3", "9.3"}) {
    for (const Case& run : cases) {
      startSystem(version, /*hasFaceID=*/false);
      calls.clear();
      arm();
      std::ostringstream seen;
      for (const char step : std::string(run.script)) {
        if (step == '-' || step == '+') device.sensor().isTouchIDCapable = step == '+';
        if (step == 's') manager().startManager();
        if (step == 'p') manager().stopManager();
        seen << manager().counter() << (manager().isRunning() ? "r " : "- ");
      }
      EXPECT_EQ(seen.str(), run.expected) << run.script << " on " << version;
      EXPECT_EQ(calls, run.calls) << run.script << " on " << version;
    }
  }
}

TEST_F(BiometricMonitor, TakesTheSensorAndGivesItBack) {
  const std::string reason = " Sentrel AuthenticationMode";
  const std::vector<std::string> released = {"invalidate" + reason, "remove" + reason,
                                             "deactivate" + reason};
  struct Case {
    const char* version;
    std::vector<std::string> taken;
    bool holdsAssertion;
  };
  const Case cases[] = {{"10.3", {"match in mode 0"}, false},
                        {"11.0", {"hold the sensor in mode 3: Sentrel AuthenticationMode"}, true},
                        {"14.0", {"hold the sensor in mode 3: Sentrel AuthenticationMode"}, true}};
  for (const Case& system : cases) {
    SCOPED_TRACE(system.version);
    startSystem(system.version);
    manager().startManager();
    EXPECT_EQ(interface()->delegate(), SNTouchIDManager::sharedManager());
    EXPECT_EQ(manager().oldDelegate(), owner);
    EXPECT_EQ(device.journal().take(), system.taken);
    EXPECT_EQ(resource()->observers().size(), system.holdsAssertion ? 1u : 0u);
    manager().stopManager();
    EXPECT_EQ(interface()->delegate(), owner);
    EXPECT_EQ(manager().oldDelegate(), nullptr);
    EXPECT_THAT(resource()->observers(), IsEmpty());
    EXPECT_THAT(device.sensor().assertions(), IsEmpty());
    std::vector<std::string> given{"cancel matching", "detect the finger"};
    if (system.holdsAssertion) given.insert(given.end(), released.begin(), released.end());
    EXPECT_EQ(device.journal().take(), given);
  }
}

TEST_F(BiometricMonitor, DoesNotTakeOneOfItsKindForTheOwner) {
  const auto other = SNTouchIDManager::makeShared(Bridge::sharedBridge(), [] {});
  interface()->setDelegate(other);
  manager().startManager();
  EXPECT_EQ(interface()->delegate(), SNTouchIDManager::sharedManager());
  EXPECT_EQ(manager().oldDelegate(), nullptr);
  manager().stopManager();
  EXPECT_EQ(interface()->delegate(), nullptr);
}

TEST_F(BiometricMonitor, HasTheSensorMatchAgainWhenItCannotStart) {
  struct Case {
    const char* version;
    bool answersMatchOperation;
    bool isAvailable;
    std::size_t assertions;
  };
  const Case cases[] = {{"14.0", true, true, 2},   {"14.0", true, false, 2},
                        {"11.0", true, true, 2},   {"14.0", false, true, 0},
                        {"14.0", false, false, 0}, {"10.3", true, true, 0}};
  for (const Case& refused : cases) {
    startSystem(refused.version, /*hasFaceID=*/false);
    device.sensor().isTouchIDCapable = refused.isAvailable;
    interface()->answersMatchOperation = refused.answersMatchOperation;
    manager().startManager();
    manager().startManager();
    EXPECT_EQ(device.sensor().assertions().size(), refused.assertions)
        << refused.version << refused.answersMatchOperation << refused.isAvailable;
    EXPECT_EQ(manager().isRunning(), refused.isAvailable);
    EXPECT_EQ(manager().oldDelegate(), refused.isAvailable ? owner : nullptr);
    manager().stopManager();
    EXPECT_THAT(resource()->observers(), IsEmpty()) << "in any case";
    SNUtils::resetBioMetricsResourceCache();
  }
}

TEST_F(BiometricMonitor, ForwardsEventsOnlyWhileItHoldsTheSensor) {
  arm();
  sense(1);
  manager().startManager();
  device.sensor().emit(3);
  EXPECT_THAT(takeCalls(), ElementsAre("started YES")) << "events come on a later turn";
  device.time().runDue();
  EXPECT_THAT(takeCalls(), ElementsAre("handle 3", "observe 3"));
  EXPECT_EQ(forwardedFrom, interface());
  device.sensor().emit(-7);
  manager().stopManager();
  device.time().runDue();
  manager().startManager();
  sense(4);
  EXPECT_THAT(takeCalls(), ElementsAre("stopped NO")) << "the blocks were forgotten";
  EXPECT_THAT(owner->told, ElementsAre("handle 1", "handle -7"));
}

TEST_F(BiometricMonitor, AnObserverThatAnotherTakesOutIsNotTold) {
  manager().setObserveEventBlock(
      [this](const Interface&, BiometricEvent) { resource()->removeObserver(owner); });
  manager().startManager();
  resource()->addObserver(owner);
  sense(3);
  EXPECT_THAT(owner->told, IsEmpty());
}

TEST_F(BiometricMonitor, FiltersOneEventOfNewerSystems) {
  enum Sensor { touch, face, none };
  struct Case {
    const char* version;
    Sensor sensor;
    bool isHandled;
    bool isObserved;
  };
  const Case cases[] = {{"11.4", touch, true, true},   {"11.4", face, true, true},
                        {"12.0", touch, false, false}, {"12.0", face, true, false},
                        {"12.0", none, true, true},    {"14.0", touch, false, false},
                        {"14.0", face, true, false},   {"10.3", touch, true, true}};
  for (const Case& filter : cases) {
    startSystem(filter.version, filter.sensor == face);
    device.sensor().isTouchIDCapable = filter.sensor == touch;
    arm();
    manager().biometricKitInterfaceHandleEvent(interface(), 12);
    manager().biometricKitInterfaceObserveEvent(interface(), 12);
    std::vector<std::string> expected;
    if (filter.isHandled) expected.push_back("handle 12");
    if (filter.isObserved) expected.push_back("observe 12");
    EXPECT_EQ(takeCalls(), expected) << filter.version << " " << filter.sensor;
    manager().biometricKitInterfaceHandleEvent(interface(), 13);
    manager().biometricKitInterfaceObserveEvent(interface(), 11);
    EXPECT_THAT(takeCalls(), ElementsAre("handle 13", "observe 11"));
  }
}

TEST_F(BiometricMonitor, BlocksMayStopItAndReplaceThemselves) {
  const auto events = std::make_shared<std::vector<BiometricEvent>>();
  manager().setHandleEventBlock([this, events](const Interface&, BiometricEvent event) {
    manager().setHandleEventBlock(nullptr);
    manager().stopManager();
    events->push_back(event);
  });
  manager().setManagerStarted([this](bool) { manager().setManagerStarted(nullptr); });
  manager().startManager();
  sense(3);
  sense(4);
  EXPECT_THAT(*events, ElementsAre(3));
  EXPECT_FALSE(manager().isRunning());
  EXPECT_EQ(interface()->delegate(), owner);
}

TEST_F(BiometricMonitor, StopsWholeThoughItIsAskedMoreInTheMiddle) {
  int stopped = 0;
  manager().setManagerStopped([this, &stopped](bool) {
    ++stopped;
    if (stopped == 1) manager().startManager();
  });
  interface()->cancel = [this] {
    interface()->cancel = nullptr;
    manager().stopManager();
    manager().startManager();
  };
  manager().startManager();
  manager().stopManager();
  EXPECT_EQ(stopped, 1);
  EXPECT_EQ(manager().counter(), 1) << "started from the block";
  EXPECT_TRUE(manager().isRunning());
  EXPECT_EQ(manager().oldDelegate(), owner);
  manager().stopManager();
  EXPECT_EQ(interface()->delegate(), owner);
  EXPECT_THAT(device.sensor().assertions(), IsEmpty());
  EXPECT_EQ(stopped, 1) << "the blocks were forgotten by the first stop";
}

TEST_F(BiometricMonitor, IsNotStartedTwiceFromWithinAStart) {
  startSystem("10.3");
  interface()->matchWithMode = [this](std::int64_t) { manager().startManager(); };
  manager().startManager();
  EXPECT_EQ(manager().counter(), 1);
  manager().stopManager();
  EXPECT_EQ(manager().counter(), 0);
  EXPECT_EQ(interface()->delegate(), owner);
}

TEST_F(BiometricMonitor, EveryStopClosesTheOverlayWindow) {
  SNWindow& window = *SNWindow::sharedInstance();
  manager().startManager();
  EXPECT_FALSE(window.isHidden());
  manager().stopManager();
  EXPECT_TRUE(window.isHidden());
  window.setHidden(false);
  manager().stopManager();
  EXPECT_TRUE(window.isHidden()) << "though it was stopped before";
}

class OldSystemMonitor : public BiometricMonitor {
 protected:
  OldSystemMonitor() { startSystem("9.3", /*hasFaceID=*/false); }

  std::shared_ptr<SBUIBiometricEventMonitor> monitor() { return platform().biometricEventMonitor; }
};

TEST_F(OldSystemMonitor, DisplacesTheObserversAndRestoresThemInOrder) {
  for (const bool wasMatching : {false, true}) {
    monitor()->_setMatchingEnabled(wasMatching);
    device.journal().take();
    manager().startManager();
    EXPECT_THAT(monitor()->observers(), ElementsAre(SNTouchIDManager::sharedManager()));
    EXPECT_THAT(manager().oldObservers(), ElementsAre(first, second, third));
    EXPECT_EQ(manager().isMatchingEnabled(), wasMatching);
    EXPECT_EQ(platform().biometricKit->delegate(), monitor());
    EXPECT_THAT(device.journal().take(), ElementsAre("_setMatchingEnabled YES", "_startMatching"));
    advance(0.9);
    EXPECT_THAT(device.journal().take(), IsEmpty());
    advance(0.1);
    EXPECT_THAT(device.journal().take(), ElementsAre("_startMatching"));
    manager().stopManager();
    EXPECT_THAT(monitor()->observers(), ElementsAre(first, second, third));
    EXPECT_EQ(monitor()->isMatchingEnabled(), wasMatching);
    EXPECT_EQ(platform().biometricKit->delegate(), kitDelegate);
    EXPECT_THAT(manager().oldObservers(), IsEmpty());
    EXPECT_FALSE(manager().isMatchingEnabled());
  }
}

TEST_F(OldSystemMonitor, ForwardsEveryEventOfTheMonitor) {
  arm();
  manager().startManager();
  takeCalls();
  sense(3);
  sense(12);
  EXPECT_THAT(takeCalls(), ElementsAre("handle 3", "handle 12"));
  EXPECT_EQ(forwardedFrom, monitor());
  EXPECT_THAT(first->told, IsEmpty());
  manager().stopManager();
  sense(4);
  EXPECT_THAT(first->told, ElementsAre("monitor 4"));
}

TEST_F(OldSystemMonitor, TheSecondMatchDoesNotKeepTheMonitor) {
  manager().startManager();
  manager().stopManager();
  const std::weak_ptr monitor = platform().biometricEventMonitor;
  platform().biometricEventMonitor.reset();
  EXPECT_TRUE(monitor.expired());
  advance(1);
}

/// What is missing, from the start or from the middle of a prompt on.
struct Lack {
  const char* name;
  const char* version;
  void (*take)(Platform&);
};

simulated::SimulatedBiometricResource& resourceOf(Platform& platform) {
  return static_cast<simulated::SimulatedBiometricResource&>(*platform.biometricResource);
}

BiometricInterface& interfaceOf(Platform& platform) {
  return *platform.biometricResource->_biometricKitInterface();
}

void takeOperations(Platform& platform) {
  BiometricInterface& interface = interfaceOf(platform);
  interface.isTouchIDCapable = interface.isPearlIDCapable = nullptr;
  interface.matchWithMode = nullptr;
  interface.cancel = interface.detectFingerWithOptions = nullptr;
  interface.answersMatchOperation = false;
}

const Lack lacks[] = {
    {"interface", "14.0", [](Platform& platform) { resourceOf(platform).setInterface(nullptr); }},
    {"interface", "10.3", [](Platform& platform) { resourceOf(platform).setInterface(nullptr); }},
    {"resource", "14.0", [](Platform& platform) { platform.biometricResource = nullptr; }},
    {"every operation", "14.0", takeOperations},
    {"every operation", "10.3", takeOperations},
    {"cancel", "14.0", [](Platform& platform) { interfaceOf(platform).cancel = nullptr; }},
    {"detection", "14.0",
     [](Platform& platform) { interfaceOf(platform).detectFingerWithOptions = nullptr; }},
    {"event monitor", "9.3", [](Platform& platform) { platform.biometricEventMonitor = nullptr; }},
    {"manager's delegate", "9.3",
     [](Platform& platform) { platform.biometricKit->setDelegate(nullptr); }}};

TEST_F(BiometricMonitor, ToleratesWhatIsMissingFromTheStart) {
  for (const Lack& lack : lacks) {
    SCOPED_TRACE(std::string(lack.name) + " on " + lack.version);
    startSystem(lack.version, /*hasFaceID=*/false);
    lack.take(platform());
    for (int round = 1; round <= 2; ++round) {
      arm();
      manager().startManager();
      EXPECT_TRUE(manager().isRunning());
      manager().startManager();
      sense(3);
      advance(1);
      manager().stopManager();
      EXPECT_FALSE(manager().isRunning());
      EXPECT_EQ(manager().counter(), 0);
      EXPECT_EQ(takeCalls().back(), "stopped NO");
      EXPECT_THAT(device.sensor().assertions(), IsEmpty());
    }
  }
}

TEST_F(BiometricMonitor, GivesBackToWhatVanishedMeanwhile) {
  for (const Lack& lack : lacks) {
    SCOPED_TRACE(std::string(lack.name) + " on " + lack.version);
    startSystem(lack.version, /*hasFaceID=*/false);
    const Interface borrowed = interface();
    const auto monitor = platform().biometricEventMonitor;
    arm();
    manager().startManager();
    lack.take(platform());
    sense(3);
    manager().stopManager();
    EXPECT_FALSE(manager().isRunning());
    EXPECT_EQ(manager().counter(), 0);
    if (lack.name == std::string_view("interface")) {
      EXPECT_THAT(device.sensor().assertions(), IsEmpty());
    }
    EXPECT_EQ(borrowed ? borrowed->delegate() : owner, owner);
    if (monitor) {
      EXPECT_THAT(monitor->observers(), ElementsAre(first, second, third));
    }
    calls.clear();
    arm();
    manager().startManager();
    EXPECT_THAT(takeCalls(), ElementsAre("started YES")) << "nothing is stuck";
  }
}

TEST_F(BiometricMonitor, MatchingThatBeganLateEndsWithTheStop) {
  const Interface late = interface();
  resource()->setInterface(nullptr);
  manager().startManager();
  resource()->setInterface(late);
  manager().startManager();
  EXPECT_EQ(device.sensor().assertions().size(), 1u);
  sense(3);  // there is no block to call
  manager().stopManager();
  EXPECT_THAT(device.sensor().assertions(), IsEmpty());
  EXPECT_EQ(late->delegate(), owner) << "it was never taken";
}

}  // namespace
}  // namespace sentrel
