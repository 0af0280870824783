// The shared instances by the names of their classes: the current process's, each one line. Only
// here, on the top floor, a class of the library meets the process that it is part of.

#include "sentrel/Process.h"
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
#include "sentrel/uikit/UIApplication.h"

namespace sentrel {

UIApplication& UIApplication::sharedApplication() {
  return Process::current().application();
}

Bridge& Bridge::sharedBridge() {
  return Process::current().bridge();
}

SNSettings& SNSettings::sharedSettings() {
  return Process::current().settings();
}

SNWiFiManager& SNWiFiManager::sharedManager() {
  return Process::current().wifiManager();
}

std::shared_ptr<SNTouchIDManager> SNTouchIDManager::sharedManager() {
  return Process::current().touchIDManager();
}

SentrelController& SentrelController::sharedInstance() {
  return Process::current().controller();
}

std::shared_ptr<SNSimplePasscodeView> SNSimplePasscodeView::sharedInstance() {
  return Process::current().simplePasscodeView();
}

std::shared_ptr<SNAuthenticationView> SNAuthenticationView::sharedInstance() {
  return Process::current().authenticationView();
}

std::shared_ptr<SNAuthenticationViewController> SNAuthenticationViewController::sharedInstance() {
  return Process::current().authenticationViewController();
}

std::shared_ptr<SNPasscodeViewController> SNPasscodeViewController::sharedUser() {
  return Process::current().passcodeViewController();
}

std::shared_ptr<SNWindow> SNWindow::sharedInstance() {
  return Process::current().overlayWindow();
}

}  // namespace sentrel
