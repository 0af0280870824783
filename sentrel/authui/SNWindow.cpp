#include "sentrel/authui/SNWindow.h"

#include <utility>

namespace sentrel {

std::shared_ptr<SNWindow> SNWindow::initWithFrame(const CGRect& frame) {
  std::shared_ptr<SNWindow> window(new SNWindow(frame));
  window->initialize();
  return window;
}

const UIClass& SNWindow::staticClass() {
  static const UIClass uiClass("SNWindow", &UIWindow::staticClass());
  return uiClass;
}

void SNWindow::initialize() {
  setForceVisible(/*value=*/false);
  setWindowLevel(UIWindowLevelAlert);
  setHidden(/*hidden=*/false);
  setAlpha(1);
  setBackgroundColor(UIColor::clearColor());
  setRootViewController(std::make_shared<UIViewController>());
}

void SNWindow::presentViewController(const std::shared_ptr<UIViewController>& viewController,
                                     bool animated,
                                     UIViewController::Completion completionHnadler) {
  setHidden(/*hidden=*/false);
  if (const auto root = rootViewController())
    root->presentViewController(viewController, animated, std::move(completionHnadler));
}

void SNWindow::closeWindow() {
  if (!forceVisible_) setHidden(/*hidden=*/true);
}

void SNWindow::closeWindowForcibly() {
  setForceVisible(/*value=*/false);
  closeWindow();
}

}  // namespace sentrel
