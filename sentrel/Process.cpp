#include "sentrel/Process.h"

#include <utility>

#include "sentrel/authui/AlertPrompt.h"
#include "sentrel/authui/LegacyPrompt.h"
#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/authui/SNSimplePasscodeView.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Bridge.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/passcode/SNPasscodeViewController.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"
#include "sentrel/settings/SettingsKeys.h"
#include "sentrel/settings/UnlockSessionStore.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIScreen.h"

namespace sentrel {

/// Hands the settings the controller's sessions, though the controller itself needs the settings:
/// neither is made before it is first used.
class Process::LateSessions final : public UnlockSessions {
 public:
  explicit LateSessions(Process& process) : process_(process) {}

  bool shouldIgnoreAuthentication(const SessionItem& item) override {
    return process_.controller().shouldIgnoreAuthentication(item);
  }

 private:
  Process& process_;
};

/// Hands the bridge the settings, which are built on it.
class Process::LateSettings final : public BridgeSettings {
 public:
  explicit LateSettings(Process& process) : process_(process) {}

  /// A log line never makes the settings: it may be of their own making. Until there are any, it
  /// looks up what the file says of it.
  bool isLoggingEnabled() const override {
    if (const SNSettings* settings = process_.settings_.ifMade())
      return settings->isLoggingEnabled();
    const auto file = process_.platform()
                          .propertyListFiles->readDictionary(std::string(settingsFilePath))
                          .dictionary;
    const PropertyList* flag = file ? find(*file, settings_keys::enableLogging) : nullptr;
    return flag && flag->boolValue();
  }

  bool shouldUsePasscodeOnly() const override {
    return process_.settings().shouldUsePasscodeOnly();
  }

 private:
  Process& process_;
};

Process::Process(Platform platform)
    : ProcessContext(std::move(platform)),
      lateSessions_(std::make_unique<LateSessions>(*this)),
      lateSettings_(std::make_unique<LateSettings>(*this)) {}

Process::~Process() = default;

UIApplication& Process::application() {
  return application_.get(*this, [this] { return std::make_shared<UIApplication>(platform()); });
}

Bridge& Process::bridge() {
  return bridge_.get(*this, [this] {
    return std::make_shared<Bridge>(platform(), *lateSettings_,
                                    [this] { return touchIDManager(); });
  });
}

SNSettings& Process::settings() {
  return settings_.get(*this, [this] {
    return std::make_shared<SNSettings>(platform(), bridge(), *lateSessions_, wifiManager());
  });
}

SNWiFiManager& Process::wifiManager() {
  return wifiManager_.get(*this, [this] { return std::make_shared<SNWiFiManager>(bridge()); });
}

UnlockSessionStore& Process::sessions() {
  return sessions_.get(
      *this, [this] { return std::make_shared<UnlockSessionStore>(bridge(), settings()); });
}

SentrelController& Process::controller() {
  return controller_.get(*this, [this] {
    PromptSurfaces surfaces{
        std::make_unique<AlertPrompt>(bridge(), [this] { return authenticationViewController(); }),
        std::make_unique<LegacyPrompt>(bridge(), [this] { return authenticationView(); })};
    return SentrelController::makeShared(bridge(), settings(), sessions(), touchIDManager(),
                                         std::move(surfaces), [this] { return overlayWindow(); });
  });
}

const std::shared_ptr<SNTouchIDManager>& Process::touchIDManager() {
  return touchIDManager_.share(*this, [this] {
    return SNTouchIDManager::makeShared(bridge(), [this] { overlayWindow()->closeWindow(); });
  });
}

const std::shared_ptr<SNSimplePasscodeView>& Process::simplePasscodeView() {
  return simplePasscodeView_.share(*this, [] { return SNSimplePasscodeView::initWithFrame({}); });
}

const std::shared_ptr<SNAuthenticationView>& Process::authenticationView() {
  return authenticationView_.share(*this, [] { return SNAuthenticationView::initWithFrame(); });
}

const std::shared_ptr<SNAuthenticationViewController>& Process::authenticationViewController() {
  return authenticationViewController_.share(
      *this, [] { return SNAuthenticationViewController::makeShared(); });
}

const std::shared_ptr<SNPasscodeViewController>& Process::passcodeViewController() {
  return passcodeViewController_.share(
      *this, [this] { return SNPasscodeViewController::makeShared(bridge()); });
}

const std::shared_ptr<SNWindow>& Process::overlayWindow() {
  return overlayWindow_.share(
      *this, [] { return SNWindow::initWithFrame(UIScreen::mainScreen().bounds()); });
}

}  // namespace sentrel
