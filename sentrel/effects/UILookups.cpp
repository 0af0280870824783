#include "sentrel/effects/UILookups.h"

#include "sentrel/uikit/UINavigationController.h"
#include "sentrel/uikit/UITabBarController.h"

namespace sentrel {
namespace {

constexpr std::string_view keyboardWindowClass = "UIRemoteKeyboardWindow";

}  // namespace

std::shared_ptr<UIViewController> sn__topViewController(const UIApplication& application) {
  const auto window = application.keyWindow();
  return window ? sn__topViewController(window->rootViewController()) : nullptr;
}

std::shared_ptr<UIViewController> sn__topViewController(
    const std::shared_ptr<UIViewController>& controller) {
  if (!controller) return nullptr;
  if (const auto* navigation = dynamic_cast<const UINavigationController*>(controller.get()))
    return sn__topViewController(navigation->visibleViewController());
  if (const auto* tabBar = dynamic_cast<const UITabBarController*>(controller.get()))
    return sn__topViewController(tabBar->selectedViewController());
  if (const auto& presented = controller->presentedViewController())
    return sn__topViewController(presented);
  return controller;
}

std::shared_ptr<UIView> sn__keyBoard() {
  for (const auto& window : UIApplication::sharedApplication().windows()) {
    if (!window->isMemberOfClassNamed(keyboardWindowClass)) continue;
    for (const auto& subview : window->subviews())
      if (subview->isMemberOfClassNamed("UIInputSetContainerView")) return subview;
  }
  return nullptr;
}

void sn__keyBoard(const SubviewBlock& block) {
  for (const auto& window : UIApplication::sharedApplication().windows())
    if (window->isMemberOfClassNamed(keyboardWindowClass))
      sn__getSubview(*window, "_UIKBCompatInputView", block);
}

std::shared_ptr<UIWindow> sn__windowOfClass(std::string_view className) {
  for (const auto& window : UIApplication::sharedApplication().windows())
    if (window->isKindOfClassNamed(className)) return window;
  return nullptr;
}

}  // namespace sentrel
