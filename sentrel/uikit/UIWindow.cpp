#include "sentrel/uikit/UIWindow.h"

#include <algorithm>
#include <utility>

#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIViewController.h"

namespace sentrel {

UIWindow::UIWindow(const CGRect& frame, const UIClass& uiClass) : UIView(frame, uiClass) {
  auto& application = UIApplication::sharedApplication();
  application_ = application.weak_from_this();
  application.windows_.push_back(this);
  setHidden(/*hidden=*/true);
}

UIWindow::~UIWindow() {
  const auto application = application_.lock();
  if (!application) return;
  std::erase(application->windows_, this);
  // Its views may live on. Nothing is posted: the process may be going too.
  if (containsFirstResponder(*application)) application->setFirstResponder(nullptr);
}

const UIClass& UIWindow::staticClass() {
  static const UIClass uiClass("UIWindow", &UIView::staticClass());
  return uiClass;
}

void UIWindow::setRootViewController(std::shared_ptr<UIViewController> controller) {
  if (rootViewController_) rootViewController_->view()->removeFromSuperview();
  rootViewController_ = std::move(controller);
  if (!rootViewController_) return;
  const auto view = rootViewController_->view();
  view->setFrame(bounds());
  view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  addSubview(view);
}

void UIWindow::setKeptByApplication(bool value) {
  const auto application = application_.lock();
  if (!application) return;
  const auto self = std::static_pointer_cast<UIWindow>(shared_from_this());
  std::erase(application->keptWindows_, self);
  if (value) application->keptWindows_.push_back(self);
}

void UIWindow::makeKeyWindow() {
  if (const auto application = application_.lock())
    application->setKeyWindow(std::static_pointer_cast<UIWindow>(shared_from_this()));
}

void UIWindow::makeKeyAndVisible() {
  setHidden(/*hidden=*/false);
  makeKeyWindow();
}

bool UIWindow::isKeyWindow() const {
  const auto application = application_.lock();
  return application && application->keyWindow().get() == this;
}

std::shared_ptr<UIWindow> UIWindow::window() const {
  return std::static_pointer_cast<UIWindow>(std::const_pointer_cast<UIResponder>(
      std::static_pointer_cast<const UIResponder>(weak_from_this().lock())));
}

}  // namespace sentrel
