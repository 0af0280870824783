#include "programs/sim/PhoneProcess.h"

#include "host/SettingsReloader.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/uikit/UIApplication.h"

namespace sentrel::sim {

PhoneProcess::PhoneProcess(simulated::SimulatedDevice& device,
                           std::shared_ptr<MainBundle> mainBundle,
                           std::shared_ptr<TextMeasuring> textMeasuring,
                           const std::function<std::shared_ptr<UIWindow>()>& content)
    : identifier_(mainBundle->bundleIdentifier()), process_(device.launch(identifier_)) {
  Platform& platform = process_->process().platform();
  platform.mainBundle = std::move(mainBundle);
  platform.textMeasuring = std::move(textMeasuring);
  add<host::SettingsReloader>();
  run([&] {
    // Newer systems close an alert by an operation that the oldest one does not know.
    if (!SNUtils::isIOS10())
      UIApplication::sharedApplication().setAlertDismissal(UIAlertDismissal::withAction);
    content_ = content();
    presenterWindow_ = std::make_shared<UIWindow>(device.screen().bounds());
    presenter_ = std::make_shared<UIViewController>();
    presenterWindow_->setRootViewController(presenter_);
    presenterWindow_->makeKeyAndVisible();
    SentrelController::sharedInstance();
  });
}

PhoneProcess::~PhoneProcess() {
  run([this] {
    passcodeHost_.reset();
    parts_.clear();
    presenter_.reset();
    presenterWindow_.reset();
    content_.reset();
  });
}

PasscodeHost& PhoneProcess::passcodeHost(const PasscodeOptions& options) {
  if (!passcodeHost_)
    passcodeHost_ = run([&] {
      return std::make_unique<PasscodeHost>(options, content_,
                                            identifier_ != springBoardBundleIdentifier);
    });
  return *passcodeHost_;
}

void PhoneProcess::post(std::string_view name) {
  run([name] {
    Process::current().platform().localCenter->post({std::string(name), std::nullopt});
  });
}

void PhoneProcess::turn(UIInterfaceOrientation orientation, CGSize screen) {
  run([&] {
    UIApplication& application = UIApplication::sharedApplication();
    application.setStatusBarOrientation(orientation);
    application.setStatusBarFrame(CGRectMake(0, 0, screen.width, 20));
    for (const auto& window : application.windows())
      window->setFrame({{}, screen});
  });
  post(UIApplicationDidChangeStatusBarOrientationNotification);
}

}  // namespace sentrel::sim
