#pragma once

#include <memory>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIViewController.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {

/// A clear window at alert level from which a prompt can be shown over any application. Visible
/// from the start, and again with every presentation.
class SENTREL_API SNWindow : public UIWindow {
 public:
  /// The current process's own window, as large as the screen.
  static std::shared_ptr<SNWindow> sharedInstance();

  static std::shared_ptr<SNWindow> initWithFrame(const CGRect& frame);
  static const UIClass& staticClass();

  /// Puts everything but the frame to its first state, with a new root view controller.
  void initialize();

  /// Keeps closeWindow from hiding the window.
  bool isForceVisible() const noexcept { return forceVisible_; }
  void setForceVisible(bool value) noexcept { forceVisible_ = value; }

  /// The last name is spelled as its callers have always spelled it. The completion may be empty.
  /// Without a root view controller the window only shows itself.
  void presentViewController(const std::shared_ptr<UIViewController>& viewController, bool animated,
                             UIViewController::Completion completionHnadler);

  void closeWindow();
  void closeWindowForcibly();

 private:
  explicit SNWindow(const CGRect& frame) : UIWindow(frame, staticClass()) {}

  bool forceVisible_ = false;
};

}  // namespace sentrel
