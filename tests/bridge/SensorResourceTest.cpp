#include <gmock/gmock.h>

#include "sentrel/biometrics/SNTouchIDManager.h"
#include "tests/support/BridgeTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* startRequest = "com.quorvin.sentrelStartBioMetricAssertionNotification";
constexpr const char* stopRequest = "com.quorvin.sentrelStopBioMetricAssertionNotification";
constexpr const char* resetRequest = "com.quorvin.sentrelResetBioMetricAssertionNotification";

/// Remembers what it was told.
class Listener final : public BiometricObserver {
 public:
  void biometricKitInterfaceHandleEvent(const std::shared_ptr<BiometricInterface>&,
                                        BiometricEvent event) override {
    events.push_back(event);
  }
  std::string description() const override { return "listener"; }

  std::vector<BiometricEvent> events;
};

class SensorResource : public BridgeTest {
 protected:
  void tellEvent(UserInfo payload) {
    SNUtils::postCFDistributedNotification("com.quorvin.sentrelPearlIDNotification", payload);
    device.time().runDue();
  }

  void startInApp(const std::shared_ptr<Listener>& observer, bool shouldAddDarwinObserver) {
    inApp([&] { SNUtils::startBioMetricsResource(observer, shouldAddDarwinObserver); });
  }

  std::shared_ptr<Listener> listener = std::make_shared<Listener>();
  std::shared_ptr<Listener> other = std::make_shared<Listener>();
};

TEST_F(SensorResource, IsHeldInTheModeThatTheDevicesLockAllows) {
  struct Case {
    bool hasPasscode;
    bool hasLockdown;
    bool isUnlockEnabled;
    const char* mode;
  };
  const Case cases[] = {
      {true, false, true, "3"},
      {true, false, false, "5"},
      {true, true, true, "5"},
      {false, false, true, "5"},
  };
  const std::string lockdown = "/Library/MobileSubstrate/DynamicLibraries/lockdown.dylib";
  for (const Case& held : cases) {
    device.lock().setPasscodeSet(held.hasPasscode);
    held.hasLockdown ? device.files().touch(lockdown) : device.files().remove(lockdown);
    device.sensor().isUnlockEnabled = held.isUnlockEnabled;
    SNUtils::startBioMetricsResource(listener, /*shouldAddDarwinObserver=*/true);
    EXPECT_THAT(device.journal().take(), ElementsAre(std::string("hold the sensor in mode ") +
                                                     held.mode + ": Sentrel AuthenticationMode"));
  }
  EXPECT_THAT(resource().observers(), ElementsAre(listener));
  EXPECT_THAT(postedNames(), IsEmpty());
}

TEST_F(SensorResource, AResetDropsWhatWasTakenUnderThisSystemsName) {
  device.sensor().hold(3, "Sentrel AuthenticationMode");
  device.sensor().hold(3, "Lock Screen");
  device.sensor().hold(5, "SentrelSomethingOlder");
  device.sensor().hold(5, "sentrel");
  resource().addObserver(other);
  SNUtils::startBioMetricsResource(listener, /*shouldAddDarwinObserver=*/false);
  device.journal().take();
  SNUtils::resetBioMetricsResourceCache(listener);
  EXPECT_THAT(device.sensor().reasons(), ElementsAre("Lock Screen", "sentrel"));
  EXPECT_THAT(resource().observers(), ElementsAre(other));
  const std::string own = " Sentrel AuthenticationMode";
  const std::string older = " SentrelSomethingOlder";
  EXPECT_THAT(device.journal().take(),
              ElementsAre("invalidate" + own, "remove" + own, "deactivate" + own,
                          "invalidate" + older, "remove" + older, "deactivate" + older,
                          "invalidate" + own, "remove" + own, "deactivate" + own));
}

TEST_F(SensorResource, StoppingInTheHomeScreenIsAReset) {
  SNUtils::startBioMetricsResource(listener, /*shouldAddDarwinObserver=*/false);
  SNUtils::startPresenceDetectOperation(listener);
  SNUtils::stopBioMetricsResource(listener);
  EXPECT_THAT(device.sensor().assertions(), IsEmpty());
  EXPECT_EQ(device.journal().lines().back(), "stop detecting presence");
  EXPECT_THAT(postedNames(), IsEmpty());
}

TEST_F(SensorResource, AMissingResourceIsLeftAlone) {
  home().biometricResource = nullptr;
  SNUtils::startPresenceDetectOperation(listener);
  SNUtils::startBioMetricsResource(listener, /*shouldAddDarwinObserver=*/false);
  SNUtils::stopBioMetricsResource(listener);
  EXPECT_THAT(device.journal().lines(),
              ElementsAre("detect presence for listener", "stop detecting presence"));
}

TEST_F(SensorResource, AnApplicationHasTheHomeScreenDoIt) {
  const host::SpringBoardObservers observers;
  startInApp(listener, /*shouldAddDarwinObserver=*/false);
  EXPECT_THAT(device.sensor().assertions(), IsEmpty());
  device.time().runDue();
  EXPECT_THAT(device.sensor().reasons(), ElementsAre("Sentrel AuthenticationMode"));
  EXPECT_THAT(resource().observers(), ElementsAre(SNTouchIDManager::sharedManager()))
      << "the home screen's own";
  inApp([&] { SNUtils::stopBioMetricsResource(listener); });
  device.time().runDue();
  EXPECT_THAT(device.sensor().assertions(), IsEmpty());
  EXPECT_THAT(resource().observers(), IsEmpty());
  device.sensor().hold(5, "Sentrel, in an earlier life");
  inApp([&] { SNUtils::resetBioMetricsResourceCache(listener); });
  device.time().runDue();
  EXPECT_THAT(device.sensor().assertions(), IsEmpty());
  EXPECT_THAT(postedNames(), ElementsAre(startRequest, stopRequest, resetRequest));
}

TEST_F(SensorResource, AnApplicationHearsOfEventsFromStartToStop) {
  tellEvent(PropertyList::Dictionary{{"EC", 9}});
  startInApp(listener, /*shouldAddDarwinObserver=*/true);
  startInApp(listener, /*shouldAddDarwinObserver=*/true);
  tellEvent(PropertyList::Dictionary{{"EC", 1}});
  tellEvent(PropertyList::Dictionary{{"EC", "-3"}});
  inApp([this] { SNUtils::resetBioMetricsResourceCache(listener); });
  tellEvent(PropertyList::Dictionary{{"EC", PropertyList::Array()}});
  tellEvent(std::nullopt);
  EXPECT_THAT(listener->events, ElementsAre(1, -3, 0, 0));
  inApp([this] { SNUtils::stopBioMetricsResource(other); });
  tellEvent(PropertyList::Dictionary{{"EC", 4}});
  inApp([this] { SNUtils::stopBioMetricsResource(listener); });
  tellEvent(PropertyList::Dictionary{{"EC", 5}});
  EXPECT_THAT(listener->events, ElementsAre(1, -3, 0, 0, 4));
}

TEST_F(SensorResource, OnlyAnObserverThatAsksForEventsAndIsThereHearsThem) {
  startInApp(listener, /*shouldAddDarwinObserver=*/false);
  SNUtils::startBioMetricsResource(other, /*shouldAddDarwinObserver=*/true);
  tellEvent(PropertyList::Dictionary{{"EC", 1}});
  EXPECT_THAT(listener->events, IsEmpty());
  EXPECT_THAT(other->events, IsEmpty()) << "the home screen has the sensor itself";
  startInApp(listener, /*shouldAddDarwinObserver=*/true);
  const std::weak_ptr gone = std::exchange(listener, nullptr);
  tellEvent(PropertyList::Dictionary{{"EC", 1}});
  EXPECT_TRUE(gone.expired()) << "nobody keeps it";
}

TEST_F(SensorResource, EventsAreLoggedWithTheirPayload) {
  enableLogging();
  startInApp(listener, /*shouldAddDarwinObserver=*/true);
  const PropertyList::Dictionary payload{{"EC", 3}, {"more", "x"}};
  tellEvent(payload);
  EXPECT_THAT(takeAppLog(),
              ElementsAre("############ sentrelPearlIDHandler->Got data: " + describe(payload)));
}

TEST_F(SensorResource, WithoutAnObserverTheMonitorHears) {
  std::vector<BiometricEvent> events;
  const auto listen = [&events] {
    SNTouchIDManager::sharedManager()->setHandleEventBlock(
        [&events](const std::shared_ptr<BiometricInterface>&, BiometricEvent event) {
          events.push_back(event);
        });
  };
  for (const bool isNamedNull : {false, true}) {
    SCOPED_TRACE(isNamedNull);
    events.clear();
    inApp([&] {
      isNamedNull ? SNUtils::startBioMetricsResource(nullptr, /*shouldAddDarwinObserver=*/true)
                  : SNUtils::startBioMetricsResource(/*shouldAddDarwinObserver=*/true);
      listen();
    });
    tellEvent(PropertyList::Dictionary{{"EC", 1}});
    inApp([&] {
      isNamedNull ? SNUtils::stopBioMetricsResource(nullptr) : SNUtils::stopBioMetricsResource();
    });
    tellEvent(PropertyList::Dictionary{{"EC", 2}});
    EXPECT_THAT(events, ElementsAre(1));
  }
  SNUtils::startBioMetricsResource(/*shouldAddDarwinObserver=*/true);
  EXPECT_THAT(resource().observers(), ElementsAre(SNTouchIDManager::sharedManager()));
  SNUtils::stopBioMetricsResource();
  EXPECT_THAT(resource().observers(), IsEmpty());
}

class PresenceDetection : public SensorResource {
 protected:
  PresenceDetection() { enableLogging(); }

  /// Starts one in the application, so that its log can be read.
  Lines startAndTakeLog() {
    inApp([this] { SNUtils::startPresenceDetectOperation(listener); });
    return takeAppLog();
  }
};

TEST_F(PresenceDetection, IsOneAProcess) {
  SNUtils::startPresenceDetectOperation(listener);
  SNUtils::startPresenceDetectOperation();
  SNUtils::stopPresenceDetectOperation();
  SNUtils::stopPresenceDetectOperation();
  EXPECT_THAT(device.journal().lines(),
              ElementsAre("detect presence for listener", "stop detecting presence",
                          "detect presence for <SNTouchIDManager>", "stop detecting presence"));
}

TEST_F(PresenceDetection, LogsHowItsStartWent) {
  const std::string failed = "###################### success: 0, Error: ";
  EXPECT_THAT(startAndTakeLog(), ElementsAre(failed + "(null)")) << "no device manager";
  away().deviceManager = home().deviceManager;
  EXPECT_THAT(startAndTakeLog(), ElementsAre("###################### success: 1, Error: (null)"));
  device.sensor().presenceStartError = {"com.apple.biometrickit", 4, "Busy"};
  EXPECT_THAT(startAndTakeLog(), ElementsAre(failed + "com.apple.biometrickit (4): Busy"));
  device.sensor().presenceCreationError = {"com.apple.biometrickit", 5, "Broken"};
  EXPECT_THAT(startAndTakeLog(), ElementsAre(failed + "com.apple.biometrickit (5): Broken"));
  device.sensor().isPearlIDCapable = false;
  EXPECT_THAT(startAndTakeLog(), ElementsAre(failed + "(null)")) << "no such sensor";
}

}  // namespace
}  // namespace sentrel
