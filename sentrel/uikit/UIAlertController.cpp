#include "sentrel/uikit/UIAlertController.h"

#include <algorithm>
#include <utility>

#include "sentrel/uikit/AlertPanel.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {

std::shared_ptr<UIAlertController> UIAlertController::alertControllerWithTitle(
    std::optional<std::string> title, std::optional<std::string> message,
    UIAlertControllerStyle preferredStyle) {
  return std::make_shared<UIAlertController>(std::move(title), std::move(message), preferredStyle);
}

UIAlertController::UIAlertController(std::optional<std::string> title,
                                     std::optional<std::string> message,
                                     UIAlertControllerStyle preferredStyle)
    : message_(std::move(message)), preferredStyle_(preferredStyle) {
  setTitle(std::move(title).value_or(""));
}

void UIAlertController::addAction(std::shared_ptr<UIAlertAction> action) {
  if (!action) return;
  actions_.push_back(std::move(action));
  if (isViewLoaded()) panel().buttons()->reloadData();
}

void UIAlertController::setContentViewController(std::shared_ptr<UIViewController> controller) {
  if (contentViewController_) contentViewController_->removeFromParentViewController();
  contentViewController_ = std::move(controller);
  addChildViewController(contentViewController_);
  if (isViewLoaded()) showContent();
}

// --- View --------------------------------------------------------------------------------------

AlertPanel& UIAlertController::panel() {
  return static_cast<AlertPanel&>(*view());
}

void UIAlertController::loadView() {
  const std::weak_ptr<UIResponder> self = weak_from_this();
  const auto texts = [](const std::string& text) {
    return text.empty() ? std::nullopt : std::optional(text);
  };
  setView(std::make_shared<AlertPanel>(texts(title()), message_, [self] {
    const auto alert = std::static_pointer_cast<UIAlertController>(self.lock());
    return alert ? alert->makeButtons() : std::vector<std::shared_ptr<UIView>>();
  }));
  panel().buttons()->reloadData();
  showContent();
}

void UIAlertController::showContent() {
  if (!contentViewController_) return panel().setContent(nullptr, {});
  const std::weak_ptr<UIViewController> content = contentViewController_;
  panel().setContent(contentViewController_->view(), [content] {
    const auto controller = content.lock();
    return controller ? controller->preferredContentSize().height : 0;
  });
}

std::vector<std::shared_ptr<UIView>> UIAlertController::makeButtons() {
  std::vector<std::shared_ptr<UIView>> buttons;
  const std::weak_ptr<UIResponder> self = weak_from_this();
  for (const auto& action : actions_) {
    const auto tapped = [self, weakAction = std::weak_ptr(action)] {
      const auto alert = std::static_pointer_cast<UIAlertController>(self.lock());
      if (alert) alert->tap(weakAction.lock());
    };
    const bool isDestructive = action->style() == UIAlertActionStyle::destructive;
    buttons.push_back(AlertPanel::makeButton(
        action->title(), action->style() == UIAlertActionStyle::cancel, action->isEnabled(),
        isDestructive ? UIColor::colorWithRed(1, 0.23, 0.19, 1) : UIColor::systemBlueColor(),
        tapped));
  }
  return buttons;
}

std::shared_ptr<UICollectionView> UIAlertController::_actionCollectionView() {
  return panel().buttons();
}

std::shared_ptr<UIView> UIAlertController::instanceVariable(std::string_view name) {
  return name == "_actionCollectionView" ? _actionCollectionView() : nullptr;
}

void UIAlertController::showPresentedView(UIWindow& window) {
  dimming_ = std::make_shared<UIView>(window.bounds());
  dimming_->setBackgroundColor(UIColor::colorWithWhite(0, 0.2));
  dimming_->addSubview(view());
  view()->setFrame(panel().frameCenteredIn(dimming_->bounds()));
  window.addSubview(dimming_);
}

void UIAlertController::hidePresentedView() {
  UIViewController::hidePresentedView();
  if (const auto dimming = std::exchange(dimming_, nullptr)) dimming->removeFromSuperview();
}

// --- Actions -----------------------------------------------------------------------------------

void UIAlertController::tap(const std::shared_ptr<UIAlertAction>& action) {
  if (!_isPresented() || std::ranges::find(actions_, action) == actions_.end()) return;
  if (!action->isEnabled()) return;
  const auto self = shared_from_this();  // a handler may let go of the last owner
  switch (UIApplication::sharedApplication().alertDismissal()) {
    case UIAlertDismissal::withAction:
      return _dismissWithAction(action);
    case UIAlertDismissal::animated:
      return _dismissAnimated(/*animated=*/true, action);
    case UIAlertDismissal::animatedWithCompletion:
      return _dismissAnimated(/*animated=*/true, action, /*triggeredByPopoverDimmingView=*/false,
                              {});
  }
}

void UIAlertController::dismissAndRun(bool animated, const std::shared_ptr<UIAlertAction>& action,
                                      Completion completion) {
  dismissViewControllerAnimated(animated, [action, completion = std::move(completion)] {
    if (action && action->handler()) action->handler()(action);
    if (completion) completion();
  });
}

void UIAlertController::_dismissAnimated(bool animated,
                                         const std::shared_ptr<UIAlertAction>& triggeringAction) {
  dismissAndRun(animated, triggeringAction, {});
}

void UIAlertController::_dismissAnimated(bool animated,
                                         const std::shared_ptr<UIAlertAction>& triggeringAction,
                                         bool /*triggeredByPopoverDimmingView*/,
                                         Completion dismissCompletion) {
  dismissAndRun(animated, triggeringAction, std::move(dismissCompletion));
}

void UIAlertController::_dismissWithAction(const std::shared_ptr<UIAlertAction>& action) {
  dismissAndRun(/*animated=*/true, action, {});
}

}  // namespace sentrel
