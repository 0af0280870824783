#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "device/simulated/SimulatedDevice.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"
#include "sentrel/uikit/UIView.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {

/// Puts a test inside the home-screen process of a simulated phone.
class HomeScreenTest : public testing::Test {
 protected:
  HomeScreenTest() { restart("14.0"); }

  /// Ends the process and starts it again on another system.
  void restart(const std::string& version, bool hasFaceID = true) {
    scope.reset();
    process.reset();
    device.system().version = version;
    device.sensor().isPearlIDCapable = hasFaceID;
    device.sensor().isTouchIDCapable = !hasFaceID;
    process = device.launch(std::string(springBoardBundleIdentifier));
    scope.emplace(process->process());
  }

  /// Whether prompts are shown by legacy alerts, on whatever system.
  void useLegacyAlerts(bool value) {
    device.system().connectedScenes = value ? 0 : 1;
    device.system().canUseAlertView = value;
  }

  void useDarkMode() { device.screen().setUserInterfaceStyle(UIUserInterfaceStyle::dark); }

  void storePasscode(const std::string& passcode) {
    device.files().put(std::string(settingsFilePath), PropertyList::Dictionary());
    SNSettings& settings = SNSettings::sharedSettings();
    ASSERT_TRUE(settings.savePasscode(passcode));
    settings.reloadSettings();
  }

  Platform& platform() { return process->process().platform(); }

  void advance(double seconds) { device.time().advance(Seconds(seconds)); }

  /// A window on the screen with `content` in it.
  std::shared_ptr<UIWindow> showInWindow(const std::shared_ptr<UIView>& content,
                                         const UIClass& uiClass = UIWindow::staticClass()) {
    auto window = std::make_shared<UIWindow>(device.screen().bounds(), uiClass);
    window->setHidden(false);
    window->addSubview(content);
    window->layoutIfNeeded();
    return window;
  }

  simulated::SimulatedDevice device;
  std::unique_ptr<simulated::SimulatedProcess> process;
  std::optional<Process::Scope> scope;
};

inline std::ostream& operator<<(std::ostream& out, const CGRect& rect) {
  return out << '(' << rect.origin.x << ' ' << rect.origin.y << ' ' << rect.size.width << ' '
             << rect.size.height << ')';
}

}  // namespace sentrel
