#include "sentrel/authui/SNAlertController.h"

#include <utility>

#include "sentrel/authui/SNWindow.h"
#include "sentrel/authui/SwitchButton.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UICollectionView.h"

namespace sentrel {
namespace {

/// Style comes first: a cancel button is one whatever it is called.
bool isSwitchButton(const UIAlertAction& action) {
  return action.style() == UIAlertActionStyle::standard && isSwitchButtonTitle(action.title());
}

/// Runs the switch button and gives it its other title; one that does nothing keeps its title.
/// Whether it was run.
bool flip(const std::shared_ptr<UIAlertAction>& action) {
  if (!action->handler()) return false;
  const std::string tapped = action->title();
  action->handler()(action);
  action->setTitle(switchButtonTitleAfter(tapped));
  return true;
}

}  // namespace

std::shared_ptr<SNAlertController> SNAlertController::alertControllerWithTitle(
    std::optional<std::string> title, std::optional<std::string> message,
    UIAlertControllerStyle preferredStyle) {
  return std::make_shared<SNAlertController>(std::move(title), std::move(message), preferredStyle);
}

bool SNAlertController::handleDismissAnimated(
    bool /*animated*/, const std::shared_ptr<UIAlertAction>& triggeringAction, bool checkForIOS9) {
  if (checkForIOS9 && SNUtils::isIOS9()) return true;
  if (!triggeringAction || !isSwitchButton(*triggeringAction)) return true;
  const auto self = shared_from_this();  // the handler may let go of the last owner
  if (flip(triggeringAction)) reloadActionsLater();
  return false;
}

void SNAlertController::_dismissAnimated(bool animated,
                                         const std::shared_ptr<UIAlertAction>& triggeringAction) {
  if (handleDismissAnimated(animated, triggeringAction, /*checkForIOS9=*/true))
    UIAlertController::_dismissAnimated(animated, triggeringAction);
}

void SNAlertController::_dismissAnimated(bool animated,
                                         const std::shared_ptr<UIAlertAction>& triggeringAction,
                                         bool triggeredByPopoverDimmingView,
                                         Completion dismissCompletion) {
  if (handleDismissAnimated(animated, triggeringAction, /*checkForIOS9=*/false))
    UIAlertController::_dismissAnimated(animated, triggeringAction, triggeredByPopoverDimmingView,
                                        std::move(dismissCompletion));
}

void SNAlertController::_dismissWithAction(const std::shared_ptr<UIAlertAction>& action) {
  if (action && isSwitchButton(*action))
    flip(action);
  else
    UIAlertController::_dismissWithAction(action);
}

void SNAlertController::dismissViewControllerAnimated(bool animated, Completion completion) {
  SNUtils::logMessage("Captured dismiss event of Alert...");
  UIAlertController::dismissViewControllerAnimated(animated, std::move(completion));
  SNWindow::sharedInstance()->closeWindow();
}

void SNAlertController::reloadActionsLater() {
  const std::weak_ptr<UIResponder> weakAlert = weak_from_this();
  UIApplication::sharedApplication().platform().mainQueue->async([weakAlert] {
    const auto alert = std::static_pointer_cast<SNAlertController>(weakAlert.lock());
    if (!alert) return;
    const auto list = std::dynamic_pointer_cast<UICollectionView>(
        alert->instanceVariable("_actionCollectionView"));
    if (list) list->reloadData();
  });
}

}  // namespace sentrel
