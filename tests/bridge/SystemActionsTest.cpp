#include <gmock/gmock.h>

#include "tests/support/BridgeTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* lockRequest = "com.quorvin.sentrelLockUINotification";
constexpr const char* forceLockRequest = "com.quorvin.sentrelForceLockUINotification";

class LockingTheDevice : public BridgeTest {
 protected:
  /// Leaves nothing but the lock screen to lock with.
  void takePasscodeManagerAway() { home().passcodeManager = nullptr; }

  Lines journal() { return device.journal().take(); }
};

TEST_F(LockingTheDevice, AnUnlockedDeviceIsLockedWithoutTheLockScreen) {
  SNUtils::lockUI();
  device.time().runUntilIdle();
  EXPECT_THAT(journal(), ElementsAre("lockDevice"));
  EXPECT_TRUE(device.lock().isLocked());
}

TEST_F(LockingTheDevice, NeedsEveryPartOfThePasscodeManager) {
  const auto relocks = [this] {
    SNUtils::lockUI();
    return journal() == Lines{"_relockUIForButtonPress YES NO"};
  };
  device.lock().setLocked(true);
  EXPECT_TRUE(relocks()) << "already locked";
  device.lock().setLocked(false);
  home().passcodeManager->isDeviceUnlocked = nullptr;
  EXPECT_TRUE(relocks());
  home().passcodeManager = simulated::makePasscodeManager(device.sharedLock());
  home().passcodeManager->lockDevice = nullptr;
  EXPECT_TRUE(relocks());
  takePasscodeManagerAway();
  EXPECT_TRUE(relocks());
}

TEST_F(LockingTheDevice, ForceDoesNotAskThePasscodeManager) {
  SNUtils::lockUI(/*force=*/true);
  EXPECT_THAT(journal(), ElementsAre("_relockUIForButtonPress YES NO"));
  device.time().runUntilIdle();
  device.journal().take();
  device.lock().setLocked(false);
  SNUtils::lockUI(/*force=*/false);
  EXPECT_THAT(journal(), ElementsAre("lockDevice"));
}

TEST_F(LockingTheDevice, FinishesTheRelockAFifthOfASecondLater) {
  takePasscodeManagerAway();
  device.system().version = "11.4";
  away().lockScreenManager = simulated::makeLockScreenManager(device.sharedLock());
  for (auto* process : {springBoard.get(), app.get()}) {
    process->run([] { SNUtils::lockUI(); });
    EXPECT_THAT(journal(), ElementsAre("_relockUIForButtonPress YES NO"));
    device.time().advance(Seconds(0.19));
    EXPECT_THAT(journal(), IsEmpty());
    device.time().advance(Seconds(0.02));
    EXPECT_THAT(journal(),
                ElementsAre("lockUIFromSource 1",
                            "homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown NO"));
    EXPECT_FALSE(device.time().runNextMoment(SteadyTime::max())) << "nothing is queued";
    home().lockScreenManager = nullptr;
  }
}

TEST_F(LockingTheDevice, TakesTheNextWayWhereOneIsMissing) {
  takePasscodeManagerAway();
  auto& manager = *home().lockScreenManager;
  manager._relockUIForButtonPress = nullptr;
  SNUtils::lockUI();
  EXPECT_THAT(journal(), ElementsAre("_relockUIForButtonlikeSource YES NO"));
  device.time().runUntilIdle();
  device.journal().take();

  manager._relockUIForButtonlikeSource = nullptr;
  manager.lockUIFromSource = nullptr;
  SNUtils::lockUI();
  EXPECT_THAT(journal(), IsEmpty());
  device.time().runUntilIdle();
  EXPECT_THAT(journal(),
              ElementsAre("homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown NO"))
      << "the second step does not depend on the first";

  manager.homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown = nullptr;
  SNUtils::lockUI();
  device.time().runUntilIdle();
  home().lockScreenManager = nullptr;
  SNUtils::lockUI();
  device.time().runUntilIdle();
  EXPECT_THAT(journal(), IsEmpty());
}

TEST_F(LockingTheDevice, AnOldApplicationThatCannotLockSaysSo) {
  enableLogging();
  device.system().version = "11.4";
  inApp([] { SNUtils::lockUI(); });
  EXPECT_THAT(takeAppLog(), ElementsAre("NO API Available to lock the Device **********"));
  EXPECT_THAT(postedNames(), IsEmpty());
  away().lockScreenManager = simulated::makeLockScreenManager(device.sharedLock());
  inApp([] { SNUtils::lockUI(/*force=*/true); });
  EXPECT_THAT(takeAppLog(), IsEmpty());
  EXPECT_THAT(journal(), ElementsAre("_relockUIForButtonPress YES NO"));
}

TEST_F(LockingTheDevice, ANewApplicationHasTheHomeScreenDoIt) {
  const host::SpringBoardObservers observers;
  device.system().version = "12.0";
  away().lockScreenManager = simulated::makeLockScreenManager(device.sharedLock());
  inApp([] { SNUtils::lockUI(/*force=*/true); });
  EXPECT_THAT(journal(), IsEmpty());
  device.time().runDue();
  EXPECT_THAT(journal(), ElementsAre("_relockUIForButtonPress YES NO"));
  device.time().runUntilIdle();
  journal();
  for (void (*lock)() : {+[] { SNUtils::lockUI(); }, +[] { SNUtils::lockUI(/*force=*/false); }}) {
    device.lock().setLocked(false);
    inApp(lock);
    device.time().runDue();
    EXPECT_THAT(journal(), ElementsAre("lockDevice"));
  }
  EXPECT_THAT(postedNames(), ElementsAre(forceLockRequest, lockRequest, lockRequest));
  device.lock().setLocked(false);
  away().passcodeManager = simulated::makePasscodeManager(device.sharedLock());
  inApp([] { SNUtils::lockUI(); });
  EXPECT_EQ(postedNames().size(), 3u) << "it can lock by itself now";
  EXPECT_THAT(journal(), ElementsAre("lockDevice"));
}

constexpr const char* servicesPath =
    "/System/Library/PrivateFrameworks/SpringBoardServices.framework/SpringBoardServices";

int frameworkSuspensions = 0;

void suspendByFramework() {
  ++frameworkSuspensions;
}

class SuspendingTheFrontMostApp : public BridgeTest {
 protected:
  SuspendingTheFrontMostApp() {
    frameworkSuspensions = 0;
    device.applications().install({"com.example.app", "App"});
    device.applications().setFront("com.example.app");
  }

  /// What is done with the application at the front.
  Lines suspend() {
    device.applications().setFront("com.example.app");
    SNUtils::suspendFrontMostApp();
    return device.journal().take();
  }
};

TEST_F(SuspendingTheFrontMostApp, TakesTheFirstWayThereIs) {
  device.libraries().install(servicesPath, {{"SBSSuspendFrontmostApplication",
                                             reinterpret_cast<void*>(&suspendByFramework)}});
  const std::string opened = std::string("open ") + servicesPath + " now";
  const std::string closed = std::string("close ") + servicesPath;
  EXPECT_THAT(suspend(), ElementsAre(opened, closed));
  EXPECT_EQ(frameworkSuspensions, 1);

  device.libraries().install(servicesPath, {});
  EXPECT_THAT(suspend(), ElementsAre(opened, "suspend com.example.app", closed));
  EXPECT_EQ(frameworkSuspensions, 1);

  device.libraries().remove(servicesPath);
  EXPECT_THAT(suspend(), ElementsAre("suspend com.example.app"));
  home().applicationController->suspendApplicationWithBundleIdentifier = nullptr;
  EXPECT_THAT(suspend(), ElementsAre("press the home button"));
  home().springBoard->_simulateHomeButtonPress = nullptr;
  EXPECT_THAT(suspend(), ElementsAre("terminate com.example.app for reason 5, not reported",
                                     "launch com.example.app suspended"));
  home().backBoard = nullptr;
  EXPECT_THAT(suspend(), ElementsAre("launch com.example.app suspended"));
  home().springBoard->_accessibilityFrontMostApplication = nullptr;
  EXPECT_THAT(suspend(), IsEmpty());
  home().springBoard = nullptr;
  home().applicationController = nullptr;
  EXPECT_THAT(suspend(), IsEmpty());
}

TEST_F(SuspendingTheFrontMostApp, IsForWhatIsAtTheFrontAndElseForTheHomeButton) {
  device.applications().setFront(std::nullopt);
  SNUtils::suspendFrontMostApp();
  EXPECT_THAT(device.journal().lines(), IsEmpty());
  home().springBoard->_accessibilityFrontMostApplication = nullptr;
  EXPECT_THAT(suspend(), ElementsAre("press the home button"));
}

TEST_F(SuspendingTheFrontMostApp, AnApplicationAsksTheHomeScreen) {
  inApp([] { SNUtils::suspendFrontMostApp(); });
  EXPECT_THAT(takeRequests(), ElementsAre("com.quorvin.sentrel.suspend.front.most.app"));
  EXPECT_THAT(device.journal().lines(), ElementsAre("suspend com.example.app"));
  EXPECT_EQ(device.applications().front(), std::nullopt);
}

class SystemActions : public BridgeTest {};

TEST_F(SystemActions, RebootSpawnsTheProgramUnderItsBareName) {
  SNUtils::reboot();
  EXPECT_THAT(device.journal().lines(), ElementsAre("spawn /usr/sbin/reboot with [reboot]"));
}

TEST_F(SystemActions, TestLaunchOpensWithoutOptions) {
  SNUtils::testLaunchApplication("com.example.app");
  EXPECT_THAT(device.journal().take(), ElementsAre("open com.example.app with 0 options"));
  home().openApplicationService = nullptr;
  SNUtils::testLaunchApplication("com.example.app");
  EXPECT_THAT(device.journal().lines(), IsEmpty());
}

/// The calls that reach the logging library.
Lines messageLogCalls;

void setFullLogging(bool flag) {
  messageLogCalls.push_back(flag ? "full" : "not full");
}
void enableSelectiveLogging(std::int64_t type, const char* regEx, const char* selectorRegEx) {
  messageLogCalls.push_back(formatText("%ld %@ %@", {type, regEx, selectorRegEx}));
}
void disableSelectiveLogging() {
  messageLogCalls.push_back("not selective");
}

class MessageLog : public BridgeTest {
 protected:
  MessageLog() { messageLogCalls.clear(); }

  void install(simulated::SimulatedLibraries::Symbols symbols) {
    device.libraries().install("/usr/lib/libmessagelog.dylib", std::move(symbols));
  }

  static void callAll() {
    SNUtils::fullLogging(true);
    SNUtils::fullLogging(false);
    SNUtils::selectiveLogging(true, -2, "^SB", "lock.*");
    SNUtils::selectiveLogging(false, 3, "", "");
  }
};

TEST_F(MessageLog, IsSetAndSaysSoInTheSystemLog) {
  install({{"MLSetFullLoggingEnabled", reinterpret_cast<void*>(&setFullLogging)},
           {"MLEnableSelectiveLogging", reinterpret_cast<void*>(&enableSelectiveLogging)},
           {"MLDisableSelectiveLogging", reinterpret_cast<void*>(&disableSelectiveLogging)}});
  callAll();
  EXPECT_THAT(messageLogCalls, ElementsAre("full", "not full", "-2 ^SB lock.*", "not selective"));
  EXPECT_THAT(device.systemLog().lines(),
              ElementsAre("################# Full Logging Enabled",
                          "################# Full Logging Enabled",
                          "################# Selective Logging Enabled for type: -2, type: ^SB, "
                          "selectorRegEx: lock.*",
                          "################# Selective Logging disabled"));
  EXPECT_THAT(device.journal().lines(), ElementsAre("open /usr/lib/libmessagelog.dylib lazily"))
      << "it logs only as long as it is open";
}

TEST_F(MessageLog, IsOptional) {
  const auto complaints = ElementsAre("################# Couldn't get MLSetFullLoggingEnabled",
                                      "################# Couldn't get MLSetFullLoggingEnabled",
                                      "################# Couldn't get MLEnableSelectiveLogging",
                                      "################# Couldn't get MLDisableSelectiveLogging");
  callAll();
  EXPECT_THAT(device.systemLog().lines(), complaints);
  install({});
  inApp(callAll);
  EXPECT_EQ(device.systemLog().lines().size(), 8u);
  EXPECT_THAT(messageLogCalls, IsEmpty());
}

}  // namespace
}  // namespace sentrel
