#include "sentrel/uikit/UITabBarController.h"

#include <algorithm>

namespace sentrel {

void UITabBarController::setViewControllers(
    const std::vector<std::shared_ptr<UIViewController>>& controllers) {
  const auto former = childViewControllers();
  for (const auto& child : former)
    child->removeFromParentViewController();
  for (const auto& controller : controllers)
    addChildViewController(controller);
  selected_ = childViewControllers().empty() ? nullptr : childViewControllers().front();
  showSelected();
}

void UITabBarController::setSelectedViewController(
    const std::shared_ptr<UIViewController>& controller) {
  const auto& children = childViewControllers();
  if (std::ranges::find(children, controller) == children.end()) return;
  selected_ = controller;
  showSelected();
}

void UITabBarController::loadView() {
  UIViewController::loadView();
  showSelected();
}

void UITabBarController::showSelected() {
  if (isViewLoaded()) showOnly(selected_);
}

}  // namespace sentrel
