#include <gmock/gmock.h>

#include "sentrel/settings/SNWiFiManager.h"
#include "tests/support/BridgeTest.h"

namespace sentrel {
namespace {

using testing::ElementsAre;

class DeviceState : public BridgeTest {};

TEST_F(DeviceState, ReadsTheSystemVersionAsANumber) {
  const std::pair<const char*, int> versions[] = {
      {"8.4.1", 8}, {"9", 9},     {"9.3.5", 9},   {"10.0", 10}, {"11.4.1", 11}, {"12.0", 12},
      {"13.7", 13}, {"14.0", 14}, {"15.0.2", 15}, {"", 0},      {"beta", 0}};
  bool (*const questions[])() = {SNUtils::isIOS9,  SNUtils::isIOS10, SNUtils::isIOS11,
                                 SNUtils::isIOS12, SNUtils::isIOS13, SNUtils::isIOS14};
  for (const auto& [text, version] : versions) {
    SCOPED_TRACE(text);
    device.system().version = text;
    for (int asked = 9; asked <= 14; ++asked)
      EXPECT_EQ(questions[asked - 9](), version >= asked) << asked;
    EXPECT_EQ(SNUtils::isNotificationProtectionEnabled(), version < 11);
  }
}

TEST_F(DeviceState, PasscodeIsAskedOfTheManagerThenOfTheHomeScreenThenOfTheProfile) {
  home().profileConnection = nullptr;
  EXPECT_TRUE(SNUtils::isDeviceHasPasscode());
  device.lock().setPasscodeSet(false);
  EXPECT_FALSE(SNUtils::isDeviceHasPasscode());
  home().passcodeManager->isPasscodeSet = nullptr;
  device.lock().setPasscodeSet(true);
  EXPECT_FALSE(SNUtils::isDeviceHasPasscode()) << "nobody left to ask";
  home().profileConnection = simulated::makeProfileConnection(device.sharedLock());
  EXPECT_TRUE(SNUtils::isDeviceHasPasscode());

  away().profileConnection = simulated::makeProfileConnection(device.sharedLock());
  EXPECT_TRUE(inApp([] { return SNUtils::isDeviceHasPasscode(); }));
  EXPECT_THAT(takeRequests(), ElementsAre("com.quorvin.sentrel.app.isPassCodeSet"));
  away().passcodeManager = simulated::makePasscodeManager(device.sharedLock());
  EXPECT_TRUE(inApp([] { return SNUtils::isDeviceHasPasscode(); }));
  EXPECT_THAT(takeRequests(), ElementsAre());
}

TEST_F(DeviceState, LockIsAskedOfTheApplicationObjectThenOfTheLockScreen) {
  home().lockScreenManager->isUILocked = [] { return false; };
  device.lock().setLocked(true);
  EXPECT_TRUE(SNUtils::isDeviceLocked());
  home().springBoard->isLocked = nullptr;
  EXPECT_FALSE(SNUtils::isDeviceLocked());
  home().lockScreenManager->isUILocked = [] { return true; };
  EXPECT_TRUE(SNUtils::isDeviceLocked());
  home().springBoard = nullptr;
  EXPECT_TRUE(SNUtils::isDeviceLocked());
  home().lockScreenManager->isUILocked = nullptr;
  EXPECT_FALSE(SNUtils::isDeviceLocked());
  home().lockScreenManager = nullptr;
  EXPECT_FALSE(SNUtils::isDeviceLocked());
}

TEST_F(DeviceState, DarkModeIsTheMainScreensInTheHomeScreenAlone) {
  EXPECT_FALSE(SNUtils::isDarkModeEnabled());
  device.screen().setUserInterfaceStyle(UIUserInterfaceStyle::dark);
  EXPECT_TRUE(SNUtils::isDarkModeEnabled());
  EXPECT_THAT(takeRequests(), ElementsAre());
  away().screen =
      std::make_shared<simulated::SimulatedScreen>(std::make_shared<simulated::SystemState>());
  EXPECT_TRUE(inApp([] { return SNUtils::isDarkModeEnabled(); })) << "not its own screen's";
  EXPECT_THAT(takeRequests(), ElementsAre("com.quorvin.sentrel.device.darkmode.enabled"));
}

/// The home screen would be asked what it is computing.
TEST_F(DeviceState, TheHomeScreenNeverAsksItself) {
  device.screen().setUserInterfaceStyle(std::nullopt);
  EXPECT_FALSE(SNUtils::isDarkModeEnabled());
  EXPECT_FALSE(inApp([] { return SNUtils::isDarkModeEnabled(); }));
  device.sensor().isFingerOn = true;
  home().biometricResource = nullptr;
  EXPECT_FALSE(SNUtils::isFingerOn());
  home().biometricKit = nullptr;
  EXPECT_FALSE(inApp([] { return SNUtils::isBioMetricsSupported(); }));
  home().applicationController = nullptr;
  EXPECT_FALSE(inApp([] { return SNUtils::isApplication("com.example.app"); }));
  springBoard->wifi().setHasManager(false);
  EXPECT_FALSE(inApp([] { return SNWiFiManager::sharedManager().knownNetworks(); }));
}

TEST_F(DeviceState, AlertViewsAreForWhereNoSceneIsConnectedOrTheMakerSaysSo) {
  EXPECT_FALSE(SNUtils::canUseAlertView());
  device.system().connectedScenes = 0;
  EXPECT_TRUE(SNUtils::canUseAlertView());
  EXPECT_FALSE(inApp([] { return SNUtils::canUseAlertView(); }));
  device.system().canUseAlertView = true;
  EXPECT_TRUE(inApp([] { return SNUtils::canUseAlertView(); }));
  device.system().connectedScenes = 1;
  EXPECT_FALSE(SNUtils::canUseAlertView());
  device.system().version = "12.5";
  EXPECT_TRUE(SNUtils::canUseAlertView());
  home().qvUtils = nullptr;
  EXPECT_FALSE(SNUtils::canUseAlertView());
}

TEST_F(DeviceState, ValuesOfTheHookingSideStayInTheirProcess) {
  EXPECT_FALSE(SNUtils::__isRequestingFromCC());
  EXPECT_FALSE(SNUtils::__isLockscreenAsDimmed());
  EXPECT_EQ(SNUtils::__currentAuthenticatedAppBundleId(), std::nullopt);
  EXPECT_EQ(SNUtils::dispatchDelayFromCC(), Seconds(0));
  SNUtils::setRequestingFromCC(true);
  SNUtils::setLockscreenAsDimmed(true);
  EXPECT_EQ(SNUtils::dispatchDelayFromCC(), Seconds(0.5));
  EXPECT_TRUE(SNUtils::__isLockscreenAsDimmed());
  SNUtils::setCurrentAuthenticatedAppBundleId("com.example.app");
  inApp([] {
    EXPECT_FALSE(SNUtils::__isRequestingFromCC());
    EXPECT_FALSE(SNUtils::__isLockscreenAsDimmed());
    EXPECT_EQ(SNUtils::__currentAuthenticatedAppBundleId(), std::nullopt);
  });
  EXPECT_EQ(SNUtils::__currentAuthenticatedAppBundleId(), "com.example.app");
  EXPECT_TRUE(SNUtils::__isRequestingFromCC());
  SNUtils::setCurrentAuthenticatedAppBundleId(std::nullopt);
  EXPECT_EQ(SNUtils::__currentAuthenticatedAppBundleId(), std::nullopt);
  EXPECT_FALSE(SNUtils::__isRequestingFromCC()) << "ends with the authenticated application";
}

TEST_F(DeviceState, TheOperationQueueIsMadeOnceAProcess) {
  OperationQueue& queue = SNUtils::operationQueue();
  EXPECT_EQ(queue.name(), "com.quorvin.sentrel");
  EXPECT_EQ(&queue, &SNUtils::operationQueue());
  EXPECT_NE(&queue, inApp([] { return &SNUtils::operationQueue(); }));
  int runs = 0;
  queue.addOperation([&runs] { ++runs; });
  device.time().runDue();
  EXPECT_EQ(runs, 1);
}

class InstalledExtensions : public BridgeTest {
 protected:
  static std::string path(const std::string& name) {
    return "/Library/MobileSubstrate/DynamicLibraries/" + name + ".dylib";
  }
};

TEST_F(InstalledExtensions, NeedEveryOneOfTheirFiles) {
  struct Case {
    bool (*isInstalled)();
    std::vector<std::string> files;
  };
  device.system().model = "iPhone10,3";
  const Case cases[] = {{SNUtils::isFlipSwitchInstalled, {"Flipswitch", "FlipControlCenter"}},
                        {SNUtils::isSentrelInstalled, {"Sentrel"}},
                        {SNUtils::isCallBarInstalled, {"CallBarX", "InCallCallBar"}},
                        {SNUtils::isLockDownInstalled, {"lockdown"}}};
  for (const Case& extension : cases) {
    SCOPED_TRACE(extension.files.front());
    EXPECT_FALSE(extension.isInstalled());
    for (const std::string& file : extension.files)
      device.files().touch(path(file));
    EXPECT_TRUE(extension.isInstalled());
    for (const std::string& file : extension.files) {
      device.files().remove(path(file));
      EXPECT_FALSE(extension.isInstalled()) << "without " << file;
      device.files().touch(path(file));
    }
  }
}

TEST_F(InstalledExtensions, LockdownIsLookedForOnOldPhonesOnly) {
  device.files().touch(path("lockdown"));
  const std::pair<const char*, bool> models[] = {
      {"iPhone10,6", true}, {"iPhone11,2", false}, {"iPhone9,1", true}, {"iPhone", true},
      {"", true},           {"iPad13,4", true},    {"x86_64", true},    {"iPhone12", false},
      {"12,1", false}};
  for (const auto& [model, isLookedFor] : models) {
    device.system().model = model;
    EXPECT_EQ(SNUtils::isLockDownInstalled(), isLookedFor) << model;
  }
}

/// A file that is there at the first look only.
class VanishingFiles final : public FileSystem {
 public:
  bool fileExists(const std::string&) const override { return ++looks_ == 1; }

 private:
  mutable int looks_ = 0;
};

TEST_F(InstalledExtensions, ATweakIsLookedAtTwice) {
  device.files().touch("/a.dylib");
  EXPECT_TRUE(SNUtils::isTweakInstalled("/a.dylib"));
  EXPECT_FALSE(SNUtils::isTweakInstalled("/b.dylib"));
  home().files = std::make_shared<VanishingFiles>();
  EXPECT_FALSE(SNUtils::isTweakInstalled("/a.dylib"));
}

}  // namespace
}  // namespace sentrel
