#include "sentrel/uikit/UINavigationController.h"

#include <algorithm>

namespace sentrel {

std::shared_ptr<UINavigationController> UINavigationController::initWithRootViewController(
    const std::shared_ptr<UIViewController>& root) {
  auto navigation = std::make_shared<UINavigationController>();
  navigation->pushViewController(root, /*animated=*/false);
  return navigation;
}

std::shared_ptr<UIViewController> UINavigationController::topViewController() const {
  return childViewControllers().empty() ? nullptr : childViewControllers().back();
}

std::shared_ptr<UIViewController> UINavigationController::visibleViewController() const {
  if (presentedViewController()) return presentedViewController();
  auto top = topViewController();
  if (top && top->presentedViewController()) return top->presentedViewController();
  return top;
}

void UINavigationController::pushViewController(const std::shared_ptr<UIViewController>& controller,
                                                bool /*animated*/) {
  addChildViewController(controller);
  showTop();
}

std::shared_ptr<UIViewController> UINavigationController::popViewControllerAnimated(
    bool /*animated*/) {
  if (childViewControllers().size() < 2) return nullptr;
  auto top = topViewController();
  top->removeFromParentViewController();
  showTop();
  return top;
}

void UINavigationController::loadView() {
  UIViewController::loadView();
  showTop();
}

void UINavigationController::showTop() {
  if (isViewLoaded()) showOnly(topViewController());
}

}  // namespace sentrel
