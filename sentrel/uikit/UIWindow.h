#pragma once

#include <memory>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

class UIApplication;
class UIViewController;

inline constexpr double UIWindowLevelNormal = 0;
inline constexpr double UIWindowLevelStatusBar = 1000;
inline constexpr double UIWindowLevelAlert = 2000;

/// A window belongs to the application of the process that it was made in, which lists it for as
/// long as it lives but keeps it alive only when asked to. A new window is hidden.
class SENTREL_API UIWindow : public UIView {
 public:
  explicit UIWindow(const CGRect& frame = {}, const UIClass& uiClass = staticClass());
  ~UIWindow() override;

  static const UIClass& staticClass();

  double windowLevel() const noexcept { return windowLevel_; }
  void setWindowLevel(double level) noexcept { windowLevel_ = level; }

  const std::shared_ptr<UIViewController>& rootViewController() const noexcept {
    return rootViewController_;
  }
  /// Shows the controller's view, filling the window, in place of the former controller's.
  void setRootViewController(std::shared_ptr<UIViewController> controller);

  /// Whether the application keeps the window alive, until it is told otherwise or the process
  /// ends: for a window that nobody else owns.
  void setKeptByApplication(bool value);

  void makeKeyWindow();
  void makeKeyAndVisible();
  bool isKeyWindow() const;

  std::shared_ptr<UIWindow> window() const override;

 private:
  std::weak_ptr<UIApplication> application_;
  std::shared_ptr<UIViewController> rootViewController_;
  double windowLevel_ = UIWindowLevelNormal;
};

}  // namespace sentrel
