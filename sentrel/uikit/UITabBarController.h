#pragma once

#include <memory>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIViewController.h"

namespace sentrel {

/// Shows one of its children at a time.
class SENTREL_API UITabBarController : public UIViewController {
 public:
  /// Selects the first.
  void setViewControllers(const std::vector<std::shared_ptr<UIViewController>>& controllers);

  /// Null when there are none.
  const std::shared_ptr<UIViewController>& selectedViewController() const noexcept {
    return selected_;
  }
  /// Ignores a controller that is none of the children.
  void setSelectedViewController(const std::shared_ptr<UIViewController>& controller);

  void loadView() override;

 private:
  void showSelected();

  std::shared_ptr<UIViewController> selected_;
};

}  // namespace sentrel
