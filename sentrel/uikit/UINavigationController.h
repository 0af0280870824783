#pragma once

#include <memory>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UINavigationBar.h"
#include "sentrel/uikit/UIViewController.h"

namespace sentrel {

/// Shows the last of a stack of controllers, its children, below a bar with its navigation item.
class SENTREL_API UINavigationController : public UIViewController {
 public:
  /// `root` may be null.
  static std::shared_ptr<UINavigationController> initWithRootViewController(
      const std::shared_ptr<UIViewController>& root);

  std::shared_ptr<UIViewController> topViewController() const;
  /// The controller that the user sees: the one that this controller or its top presents, else the
  /// top; null when there is none.
  std::shared_ptr<UIViewController> visibleViewController() const;

  /// Ignores null and a controller that is in the stack.
  void pushViewController(const std::shared_ptr<UIViewController>& controller, bool animated);
  /// Takes the top off and answers it; the root stays, and the answer is null.
  std::shared_ptr<UIViewController> popViewControllerAnimated(bool animated);

  /// Along the top of the view, over the content.
  const std::shared_ptr<UINavigationBar>& navigationBar();

  void loadView() override;

 private:
  void showTop();

  std::shared_ptr<UINavigationBar> navigationBar_;
};

}  // namespace sentrel
