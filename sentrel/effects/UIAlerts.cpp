#include "sentrel/effects/UIAlerts.h"

#include <memory>
#include <string_view>
#include <utility>

#include "sentrel/bridge/SNUtils.h"
#include "sentrel/uikit/UIAlertController.h"
#include "sentrel/uikit/UIApplication.h"

namespace sentrel {
namespace {

std::string localized(std::string_view key) {
  return std::string(SNUtils::localizedString(key));
}

void present(UIViewController& controller, const std::string& title, const std::string& message,
             const std::function<void()>& ok) {
  const auto alert =
      UIAlertController::alertControllerWithTitle(title, message, UIAlertControllerStyle::alert);
  const auto tapped = [ok](const std::shared_ptr<UIAlertAction>&) {
    if (ok) ok();
  };
  alert->addAction(
      UIAlertAction::actionWithTitle(localized("OK"), UIAlertActionStyle::standard, tapped));
  controller.presentViewController(alert, /*animated=*/true, {});
}

}  // namespace

void sn__showInformation(UIViewController& controller, const std::string& message) {
  sn__showAlertWithTitle(controller, localized("Information"), message, {});
}

void sn__showWarning(UIViewController& controller, const std::string& message) {
  sn__showAlertWithTitle(controller, localized("Warning"), message, {});
}

void sn__showError(UIViewController& controller, const std::string& message,
                   std::function<void()> okAction) {
  sn__showAlertWithTitle(controller, localized("Error"), message, std::move(okAction));
}

void sn__showAlertWithTitle(UIViewController& controller, const std::string& title,
                            const std::string& alertMessage, std::function<void()> ok) {
  const std::weak_ptr<UIResponder> weakController = controller.weak_from_this();
  UIApplication::sharedApplication().platform().mainQueue->async(
      [weakController, title, alertMessage, ok = std::move(ok)] {
        const auto presenter = std::static_pointer_cast<UIViewController>(weakController.lock());
        if (presenter) present(*presenter, title, alertMessage, ok);
      });
}

}  // namespace sentrel
