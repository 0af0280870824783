#pragma once

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "sentrel/authui/SNAlertController.h"
#include "sentrel/authui/SNAlertView.h"
#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/TextFormat.h"
#include "sentrel/controller/SentrelController.h"
#include "tests/support/HomeScreenTest.h"
#include "tests/support/PromptDriver.h"

namespace sentrel {

/// A home screen on which something asks for the owner's identity.
class PromptTest : public HomeScreenTest {
 protected:
  using Lines = std::vector<std::string>;

  static constexpr const char* passcode = "482913";
  static constexpr BiometricEvent match = 3;

  PromptTest() { start("14.0"); }

  /// A process in which nothing happened yet, on another system.
  void start(const std::string& version, bool hasFaceID = true, bool isLegacy = false) {
    window.reset();
    restart(version, hasFaceID);
    useLegacyAlerts(isLegacy);
    window = std::make_shared<UIWindow>(device.screen().bounds());
    window->setRootViewController(std::make_shared<UIViewController>());
    window->setHidden(false);
    useSettings({});
    happened.clear();
    device.journal().take();
  }

  /// The settings, with or without a stored passcode.
  void useSettings(PropertyList::Dictionary file, bool hasPasscode = true) {
    device.files().put(std::string(settingsFilePath), std::move(file));
    SNSettings::sharedSettings().reloadSettings();
    if (!hasPasscode) return;
    ASSERT_TRUE(SNSettings::sharedSettings().savePasscode(passcode));
    SNSettings::sharedSettings().reloadSettings();
  }

  SentrelController& controller() { return SentrelController::sharedInstance(); }
  SNTouchIDManager& sensorManager() { return *SNTouchIDManager::sharedManager(); }
  const std::shared_ptr<UIViewController>& presenter() { return window->rootViewController(); }

  /// A completion that notes the outcome as "name YES NO": authenticated, allowed.
  SentrelController::Completion noting(std::string name = "ended") {
    return [this, name = std::move(name)](bool authenticated, bool allowed) {
      happened.push_back(name + (authenticated ? " YES" : " NO") + (allowed ? " YES" : " NO"));
    };
  }
  Lines takeHappened() { return std::exchange(happened, {}); }

  void ask(const std::string& name = "ended") {
    controller().requiresAuthenticationForItem(name, "message", presenter(), noting(name));
  }
  /// Asks, and waits until the prompt stands still.
  void prompt(const std::string& name = "ended") {
    ask(name);
    advance(1);
  }

  void sense(BiometricEvent event) {
    device.sensor().emit(event);
    device.time().runDue();
  }

  std::shared_ptr<SNAlertController> alert() {
    return std::dynamic_pointer_cast<SNAlertController>(controller().alertController());
  }
  std::shared_ptr<SNAlertView> legacyAlert() {
    return std::dynamic_pointer_cast<SNAlertView>(controller().alertController());
  }
  /// The view that the prompt shows.
  SNAuthenticationView& view() {
    return legacyAlert() ? *SNAuthenticationView::sharedInstance()
                         : *SNAuthenticationViewController::sharedInstance()->authenticationView();
  }
  bool isInPasscodeMode() {
    return view().currentAuthenticationMode() == SNAuthenticationModePasscode;
  }
  bool isShowing() { return controller().isAlertShowing(); }

  /// The seconds since `start`, as short as they can be said.
  std::string since(WallTime start) {
    const double seconds = std::chrono::duration<double>(device.time().now() - start).count();
    std::ostringstream text;
    text << std::round(seconds * 100) / 100;
    return text.str();
  }

  std::shared_ptr<UIWindow> window;
  Lines happened;
};

}  // namespace sentrel
