#include <gmock/gmock.h>

#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIColor.h"
#include "sentrel/uikit/UILabel.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {
namespace {

using testing::ElementsAre;

/// A second device, whose home screen the test enters while it asks the first one's processes.
class ProcessesApart : public TwoProcesses {
 protected:
  simulated::SimulatedDevice otherDevice_;
  std::unique_ptr<simulated::SimulatedProcess> otherHome_ =
      otherDevice_.launch(std::string(springBoardBundleIdentifier));
};

TEST_F(ProcessesApart, AskAndChangeTheirOwnDeviceWhereverTheyAreAsked) {
  useSettings({{std::string(settings_keys::enabled), true}});
  device.lock().setLocked(true);
  const Process::Scope elsewhere(otherHome_->process());
  EXPECT_FALSE(SNUtils::isDeviceLocked()) << "the other device is not locked";
  EXPECT_TRUE(springBoard->process().bridge().isDeviceLocked());
  EXPECT_TRUE(app->process().bridge().isDeviceLocked()) << "asked of its own home screen";
  const std::size_t before = posted(notifications::settingsChanged);
  EXPECT_TRUE(settings().addToProtectedApps("com.example.bank"));
  EXPECT_EQ(posted(notifications::settingsChanged), before + 1);
  EXPECT_TRUE(otherDevice_.darwin().posted().empty());
}

TEST_F(ProcessesApart, AViewBelongsToTheProcessThatItIsMadeFor) {
  otherDevice_.screen().setUserInterfaceStyle(UIUserInterfaceStyle::dark);
  const Process::Scope elsewhere(otherHome_->process());
  const auto& title = springBoard->process().authenticationView()->titleLabel();
  EXPECT_EQ(title->textColor(), UIColor::darkGrayColor()) << "the other device is dark";
  springBoard->process().overlayWindow()->setHidden(/*hidden=*/false);
  EXPECT_TRUE(otherHome_->process().application().windows().empty());
}

TEST_F(ProcessesApart, ALogLineIsWrittenButMakesNoSettings) {
  device.files().put(std::string(settingsFilePath),
                     {{std::string(settings_keys::enableLogging), true}});
  inApp([] { SNUtils::logMessage("early"); });
  EXPECT_THAT(logLines, ElementsAre("com.example.app < - > early"));
  device.files().put(std::string(settingsFilePath),
                     {{std::string(settings_keys::vibrateOnError), true}});
  inApp([] {
    SNUtils::logMessage("silent");
    EXPECT_TRUE(SNSettings::sharedSettings().isVibrateOnError()) << "made only now";
  });
  EXPECT_EQ(logLines.size(), 1U);
}

}  // namespace
}  // namespace sentrel
