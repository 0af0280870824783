#include <gmock/gmock.h>

#include <optional>

#include "host/BiometricEventRelay.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Bridge.h"
#include "tests/support/BridgeTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Interface = std::shared_ptr<BiometricInterface>;

constexpr const char* loadedLine = "BiometricKit.framework loaded successfully";
constexpr const char* biometricKit = "/System/Library/PrivateFrameworks/BiometricKit.framework";

/// An application that borrows the sensor through the home screen.
class ApplicationEvents : public BridgeTest {
 protected:
  ApplicationEvents() { SNTouchIDManager::sharedManager(); }

  /// Starts the application's monitor, which tells of every event that it handles.
  void startInApp() {
    inApp([this] {
      SNTouchIDManager& manager = *SNTouchIDManager::sharedManager();
      manager.setHandleEventBlock([this](const Interface& interface, BiometricEvent event) {
        EXPECT_FALSE(SNUtils::isSpringBoard());
        from = interface;
        events.push_back(event);
      });
      manager.startManager();
    });
    device.time().runDue();
    takeRequests();
  }

  void stopInApp() {
    inApp([] { SNTouchIDManager::sharedManager()->stopManager(); });
    device.time().runDue();
  }

  void sense(BiometricEvent event) {
    device.sensor().emit(event);
    device.time().runDue();
  }

  std::vector<BiometricEvent> takeEvents() { return std::exchange(events, {}); }

  host::SpringBoardObservers observers;
  std::optional<host::BiometricEventRelay> relay{std::in_place};
  std::vector<BiometricEvent> events;
  Interface from;
};

TEST_F(ApplicationEvents, AreRelayedFromTheHomeScreenWhileTheSensorIsBorrowed) {
  sense(1);
  startInApp();
  EXPECT_THAT(device.sensor().reasons(), ElementsAre("Sentrel AuthenticationMode"));
  EXPECT_THAT(resource().observers(), testing::Contains(SNTouchIDManager::sharedManager()));
  sense(3);
  sense(-4);
  EXPECT_THAT(takeEvents(), ElementsAre(3, -4));
  EXPECT_EQ(from, nullptr);
  const auto& posted = device.distributed().posted();
  ASSERT_EQ(posted.size(), 3u);
  EXPECT_EQ(posted[1].name, "com.quorvin.sentrelPearlIDNotification");
  EXPECT_EQ(posted[1].userInfo, (PropertyList::Dictionary{{"EC", 3}}));
  stopInApp();
  sense(5);
  EXPECT_THAT(takeEvents(), IsEmpty());
  EXPECT_THAT(device.sensor().assertions(), IsEmpty());
  EXPECT_THAT(resource().observers(), testing::SizeIs(1)) << "the relay alone";
}

TEST_F(ApplicationEvents, AreNotRelayedWithoutARelayOrAResource) {
  startInApp();
  relay.reset();
  EXPECT_THAT(resource().observers(), ElementsAre(SNTouchIDManager::sharedManager()));
  sense(3);
  home().biometricResource = nullptr;
  relay.emplace();
  sense(4);
  EXPECT_THAT(takeEvents(), IsEmpty());
}

TEST_F(ApplicationEvents, ComeFromTheSensorItselfWhereAnApplicationCanMatch) {
  restartApp("10.3", /*hasFaceID=*/false);
  startInApp();
  EXPECT_EQ(device.journal().take(), Lines{"match in mode 0"});
  sense(3);
  EXPECT_THAT(takeEvents(), ElementsAre(3)) << "and not by the relay too";
  EXPECT_EQ(from, away().biometricKit->delegate());
  stopInApp();
  startInApp();
  inApp([this] { away().biometricKit->delegate()->cancel(); });
  sense(4);
  EXPECT_THAT(takeEvents(), IsEmpty());
  EXPECT_THAT(postedNames(), IsEmpty()) << "the home screen need not take the sensor";
}

TEST_F(ApplicationEvents, OfTwoApplicationsReachTheOneThatBorrows) {
  const auto other = device.launch("com.example.other");
  other->run([] { SNTouchIDManager::sharedManager(); });
  startInApp();
  other->run([] {
    SNTouchIDManager::sharedManager()->setHandleEventBlock(
        [](const Interface&, BiometricEvent) { ADD_FAILURE(); });
  });
  sense(3);
  EXPECT_THAT(takeEvents(), ElementsAre(3));
}

TEST_F(ApplicationEvents, MayEndWithTheApplication) {
  startInApp();
  device.sensor().emit(3);
  app.reset();
  device.time().runDue();
  EXPECT_THAT(takeEvents(), IsEmpty());
}

TEST_F(ApplicationEvents, NeedTheFrameworkWhoseLoadingIsLogged) {
  enableLogging();
  startInApp();
  EXPECT_THAT(takeAppLog(), ElementsAre(loadedLine, "[interface delegate]: (null)"));
  stopInApp();
  startInApp();
  EXPECT_THAT(takeAppLog(), ElementsAre("[interface delegate]: (null)")) << "it is loaded";
  inApp([this] {
    const auto other = SNTouchIDManager::makeShared(Bridge::sharedBridge(), [] {});
    stopInApp();
    away().biometricKit->delegate()->setDelegate(other);
    SNTouchIDManager::sharedManager()->startManager();
  });
  EXPECT_THAT(takeAppLog(), ElementsAre("[interface delegate]: <SNTouchIDManager>"));
}

TEST_F(ApplicationEvents, AreNotHeardWithoutTheFramework) {
  device.libraries().removeBundle(biometricKit);
  enableLogging();
  for (const char* version : {"14.0", "9.3"}) {
    restartApp(version, /*hasFaceID=*/false);
    startInApp();
    sense(3);
    EXPECT_TRUE(inApp([] { return SNTouchIDManager::sharedManager()->isRunning(); }));
    stopInApp();
    EXPECT_FALSE(inApp([] { return SNTouchIDManager::sharedManager()->isRunning(); }));
    EXPECT_THAT(takeEvents(), IsEmpty());
  }
  for (const std::string& line : takeAppLog())
    EXPECT_NE(line, loadedLine);
}

TEST_F(ApplicationEvents, AreFilteredAndTheFilterLogs) {
  restartApp("12.0", /*hasFaceID=*/false);
  enableLogging();
  startInApp();
  takeAppLog();
  const std::string ignored = "Ignoring event 12 on iOS 12 for Touch ID device..";
  sense(12);
  EXPECT_EQ(takeAppLog().back(), ignored);
  EXPECT_THAT(takeEvents(), IsEmpty());
  inApp([] { SNTouchIDManager::sharedManager()->biometricKitInterfaceObserveEvent(nullptr, 12); });
  EXPECT_THAT(takeAppLog(), ElementsAre(ignored));
}

}  // namespace
}  // namespace sentrel
