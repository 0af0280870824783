#include "sentrel/uikit/UIViewController.h"

#include <algorithm>
#include <utility>

#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UINavigationController.h"
#include "sentrel/uikit/UINavigationItem.h"
#include "sentrel/uikit/UIScreen.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {
namespace {

void whenOver(bool animated, UIViewController::Completion completion) {
  if (!completion) return;
  const Seconds delay = animated ? UIViewController::transitionDuration : Seconds(0);
  UIApplication::sharedApplication().platform().mainQueue->after(delay, std::move(completion));
}

}  // namespace

UIViewController::~UIViewController() = default;

std::shared_ptr<UIViewController> UIViewController::shared() {
  return std::static_pointer_cast<UIViewController>(shared_from_this());
}

// --- View --------------------------------------------------------------------------------------

const std::shared_ptr<UIView>& UIViewController::view() {
  if (!view_) {
    loadView();
    viewDidLoad();
  }
  return view_;
}

void UIViewController::loadView() {
  setView(std::make_shared<UIView>(UIScreen::mainScreen().bounds()));
}

void UIViewController::setTitle(std::string title) {
  title_ = std::move(title);
  if (navigationItem_) navigationItem_->setTitle(title_);
}

const std::shared_ptr<UINavigationItem>& UIViewController::navigationItem() {
  if (!navigationItem_) {
    navigationItem_ = std::make_shared<UINavigationItem>();
    navigationItem_->setTitle(title_);
  }
  return navigationItem_;
}

// --- Presenting --------------------------------------------------------------------------------

std::shared_ptr<UIViewController> UIViewController::presentingViewController() const {
  if (auto own = presenting_.lock()) return own;
  const auto parent = parent_.lock();
  return parent ? parent->presentingViewController() : nullptr;
}

void UIViewController::presentViewController(const std::shared_ptr<UIViewController>& controller,
                                             bool animated, Completion completion) {
  if (!controller || controller.get() == this || presented_ || !controller->presenting_.expired())
    return;
  presented_ = controller;
  controller->presenting_ = shared();
  if (const auto window = view()->window()) controller->showPresentedView(*window);
  whenOver(animated, std::move(completion));
}

void UIViewController::dismissViewControllerAnimated(bool animated, Completion completion) {
  const auto self = shared();
  if (presented_)
    dismissPresented();
  else if (const auto presenter = presentingViewController())
    presenter->dismissPresented();
  whenOver(animated, std::move(completion));
}

void UIViewController::dismissPresented() {
  const auto dismissed = std::exchange(presented_, nullptr);
  if (!dismissed) return;
  dismissed->dismissPresented();
  dismissed->presenting_.reset();
  dismissed->hidePresentedView();
}

void UIViewController::showPresentedView(UIWindow& window) {
  view()->setFrame(window.bounds());
  window.addSubview(view());
}

void UIViewController::hidePresentedView() {
  if (isViewLoaded()) view()->removeFromSuperview();
}

// --- Children ----------------------------------------------------------------------------------

std::shared_ptr<UINavigationController> UIViewController::navigationController() const {
  const auto parent = parent_.lock();
  if (!parent) return nullptr;
  auto navigation = std::dynamic_pointer_cast<UINavigationController>(parent);
  return navigation ? navigation : parent->navigationController();
}

void UIViewController::addChildViewController(const std::shared_ptr<UIViewController>& child) {
  if (!child || child.get() == this || child->parent_.lock().get() == this) return;
  child->removeFromParentViewController();
  child->parent_ = shared();
  children_.push_back(child);
  child->didMoveToParentViewController(shared());
}

void UIViewController::removeFromParentViewController() {
  const auto parent = parent_.lock();
  if (!parent) return;
  const auto self = shared();
  parent_.reset();
  std::erase(parent->children_, self);
  didMoveToParentViewController(nullptr);
}

void UIViewController::showOnly(const std::shared_ptr<UIViewController>& child) {
  const auto container = view();
  while (!container->subviews().empty())
    container->subviews().back()->removeFromSuperview();
  if (!child) return;
  child->view()->setFrame(container->bounds());
  child->view()->setAutoresizingMask(UIViewAutoresizingFlexibleWidth |
                                     UIViewAutoresizingFlexibleHeight);
  container->addSubview(child->view());
}

}  // namespace sentrel
