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

const std::shared_ptr<UINavigationBar>& UINavigationController::navigationBar() {
  if (!navigationBar_) {
    navigationBar_ = std::make_shared<UINavigationBar>();
    navigationBar_->setOnBack([weak = weak_from_this()] {
      const auto self = std::static_pointer_cast<UINavigationController>(weak.lock());
      if (self) self->popViewControllerAnimated(/*animated=*/true);
    });
  }
  return navigationBar_;
}

void UINavigationController::showTop() {
  if (!isViewLoaded()) return;
  showOnly(topViewController());
  UINavigationBar& bar = *navigationBar();
  std::vector<std::shared_ptr<UINavigationItem>> items;
  for (const auto& child : childViewControllers())
    items.push_back(child->navigationItem());
  bar.setItems(std::move(items));
  const CGSize size = view()->bounds().size;
  bar.setFrame(CGRectMake(0, 0, size.width, UINavigationBar::heightWithStatusBar()));
  const double top = bar.frame().maxY();
  if (const auto shown = topViewController())
    shown->view()->setFrame(CGRectMake(0, top, size.width, size.height - top));
  view()->addSubview(navigationBar_);
}

}  // namespace sentrel
