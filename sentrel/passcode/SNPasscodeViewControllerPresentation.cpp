// How the screen comes up, how it turns and how it leaves.

#include <algorithm>
#include <utility>

#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/SystemVersion.h"
#include "sentrel/passcode/PasscodeView.h"
#include "sentrel/passcode/SNPasscodeViewController.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UINavigationController.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {
namespace {

/// From this system on windows turn with the interface by themselves.
constexpr float firstTurningWindows = 8.0F;

bool isLandscape(std::int64_t orientation) {
  return orientation == 3 || orientation == 4;
}

std::int64_t statusBarOrientation() {
  return static_cast<std::int64_t>(UIApplication::sharedApplication().statusBarOrientation());
}

/// The navigation that a host is part of, or is.
std::shared_ptr<UINavigationController> navigationOf(
    const std::shared_ptr<UIViewController>& host) {
  const auto around = host->navigationController();
  return around ? around : std::dynamic_pointer_cast<UINavigationController>(host);
}

}  // namespace

double SNPasscodeViewController::getStatusBarHeight() {
  const CGSize size = UIApplication::sharedApplication().statusBarFrame().size;
  return isLandscape(statusBarOrientation()) ? size.width : size.height;
}

std::shared_ptr<UIView> SNPasscodeViewController::firstWindow() const {
  const auto windows = UIApplication::sharedApplication().windows();
  return windows.empty() ? nullptr : windows.front();
}

// --- Settings flows ------------------------------------------------------------------------------

void SNPasscodeViewController::present(const std::shared_ptr<UIViewController>& host) {
  if (!host) return;
  // Whatever it was part of before does not take the screen for closed.
  isBeingPresented_ = true;
  _prepareNavigationControllerWithController(host);
  isBeingPresented_ = false;
}

void SNPasscodeViewController::_prepareNavigationControllerWithController(
    const std::shared_ptr<UIViewController>& host) {
  if (!hidesCancelButton())
    navigationItem()->setRightBarButtonItem(
        makeBarButton(localized("Cancel"), &PasscodeFlow::_cancelAndDismissMe));
  navigationItem()->setHidesBackButton(hidesBackButton());
  if (displayedAsModal()) {
    presentModally(host);
  } else if (const auto navigation = navigationOf(host)) {
    navigation->pushViewController(weakSelf().lock(), /*animated=*/true);
  }
  rotateAccordingToStatusBarOrientationAndSupportedOrientations();
  layOutAgain();
}

void SNPasscodeViewController::presentModally(const std::shared_ptr<UIViewController>& host) {
  const auto navigation = UINavigationController::initWithRootViewController(weakSelf().lock());
  removeBar();
  colour(*navigation->navigationBar());
  host->presentViewController(navigation, /*animated=*/true, {});
}

void SNPasscodeViewController::colour(UINavigationBar& bar) const {
  bar.setTintColor(appearance_.navigationTintColor);
  bar.setBarTintColor(appearance_.navigationBarTintColor);
  bar.setTranslucent(appearance_.navigationBarTranslucent);
  bar.setTitleColor(appearance_.navigationTitleColor);
}

std::shared_ptr<UIBarButtonItem> SNPasscodeViewController::makeBarButton(
    const std::string& title, void (PasscodeFlow::*action)()) {
  return std::make_shared<UIBarButtonItem>(UIBarButtonItem{title, [weak = weakSelf(), action] {
                                                             if (const auto self = weak.lock())
                                                               (self.get()->*action)();
                                                           }});
}

// --- The lock screen -----------------------------------------------------------------------------

bool SNPasscodeViewController::coverWindow(bool animated) {
  const auto window = firstWindow();
  if (!window) return false;
  window->addSubview(view());
  rotateAccordingToStatusBarOrientationAndSupportedOrientations();
  layOutAgain();
  if (!animated) return true;
  const CGPoint inside = view()->center();
  view()->setCenter(centerOutside());
  UIView::animateWithDuration(lockAnimationDuration(),
                              [this, inside] { view()->setCenter(inside); });
  return true;
}

void SNPasscodeViewController::slideAway(Seconds duration) {
  if (isViewLoaded())
    UIView::animateWithDuration(duration, [this] { view()->setCenter(centerOutside()); });
}

/// Below the window, as the interface is turned.
CGPoint SNPasscodeViewController::centerOutside() const {
  const CGPoint center = passcodeView_->center();
  const CGPoint down =
      passcodeView_->transform().apply(CGPoint{0, passcodeView_->bounds().size.height});
  return {center.x + down.x, center.y + down.y};
}

void SNPasscodeViewController::showNavBar(const std::string& logoutTitle) {
  view();
  const auto item = std::make_shared<UINavigationItem>();
  item->setLeftBarButtonItem(makeBarButton(logoutTitle, &PasscodeFlow::_logoutWasPressed));
  const auto bar = std::make_shared<UINavigationBar>();
  bar->setItems({item});
  colour(*bar);
  passcodeView_->setNavBar(bar);
  passcodeView_->setTopInset(topInset());
}

void SNPasscodeViewController::removeNavBar() {
  if (!passcodeView_) return;
  passcodeView_->setNavBar(nullptr);
  passcodeView_->setTopInset(topInset());
}

std::string SNPasscodeViewController::navBarButtonTitle() const {
  const auto& bar = elements().navBar;
  const auto item = bar ? bar->topItem() : nullptr;
  return item && item->leftBarButtonItem() ? item->leftBarButtonItem()->title : "";
}

double SNPasscodeViewController::topInset() const {
  if (elements().navBar) return UINavigationBar::heightWithStatusBar();
  if (const auto navigation = navigationController()) {
    // The bar's lower edge, seen from a view that may begin above or below it.
    const double bottom = navigation->navigationBar()->frame().maxY();
    return std::max(bottom - passcodeView_->frame().origin.y, 0.0);
  }
  return UINavigationBar::heightWithStatusBar() - UINavigationBar::stripHeight;
}

// --- Leaving -------------------------------------------------------------------------------------

void SNPasscodeViewController::leave(PasscodeLeaving way) {
  switch (way) {
    case PasscodeLeaving::removeFromWindow:
      if (isViewLoaded()) view()->removeFromSuperview();
      return removeFromParentViewController();
    case PasscodeLeaving::dismiss:
      return dismissViewControllerAnimated(/*animated=*/true, {});
    case PasscodeLeaving::popAnimated:
      return popFromNavigation(/*animated=*/true);
    case PasscodeLeaving::popAtOnce:
      return popFromNavigation(/*animated=*/false);
  }
}

/// Nothing else is popped in its place.
void SNPasscodeViewController::popFromNavigation(bool animated) {
  const auto navigation = navigationController();
  if (navigation && navigation->topViewController().get() == this)
    navigation->popViewControllerAnimated(animated);
}

/// The user went back.
void SNPasscodeViewController::didMoveToParentViewController(
    const std::shared_ptr<UIViewController>& parent) {
  const bool isGone = !parent && !isBeingPresented_;
  if (isGone && isCurrentlyOnScreen() && !hidesBackButton()) _close();
}

// --- Orientation ---------------------------------------------------------------------------------

bool SNPasscodeViewController::turnsByItself() const {
  return isSystemVersionAtLeast(bridge_.platform(), firstTurningWindows);
}

std::uint64_t SNPasscodeViewController::supportedInterfaceOrientations() const {
  constexpr std::uint64_t portraitOnly = 2;
  constexpr std::uint64_t all = 30;
  return displayedAsLockScreen() && !turnsByItself() ? all : portraitOnly;
}

std::int64_t SNPasscodeViewController::desiredOrientation() const {
  const std::uint64_t supported = supportedInterfaceOrientations();
  const auto isSupported = [supported](std::int64_t orientation) {
    return (supported & UIInterfaceOrientationMaskFromOrientation(orientation)) != 0;
  };
  for (const std::int64_t orientation :
       {statusBarOrientation(), std::int64_t{1}, std::int64_t{4}, std::int64_t{3}})
    if (isSupported(orientation)) return orientation;
  return 2;
}

void SNPasscodeViewController::rotateAccordingToStatusBarOrientationAndSupportedOrientations() {
  const double angle = UIInterfaceOrientationAngleOfOrientation(desiredOrientation());
  std::shared_ptr<UIView> window = view()->window();
  if (!window) window = firstWindow();
  setIfNotEqualTransform(CGAffineTransform::makeRotation(angle),
                         window ? window->bounds() : view()->frame());
}

void SNPasscodeViewController::setIfNotEqualTransform(const CGAffineTransform& transform,
                                                      const CGRect& frame) {
  if (view()->transform() != transform) view()->setTransform(transform);
  if (view()->frame() != frame) view()->setFrame(frame);
}

void SNPasscodeViewController::statusBarFrameOrOrientationChanged(
    const Notification& /*notification*/) {
  rotateAccordingToStatusBarOrientationAndSupportedOrientations();
  layOutAgain();
  UIView& container = *elements().animatingView;
  if (turnsByItself()) return container.setFrame(view()->frame());
  const auto window = firstWindow();
  CGSize size = window ? window->bounds().size : view()->frame().size;
  if (isLandscape(statusBarOrientation())) std::swap(size.width, size.height);
  container.setFrame({{}, size});
}

}  // namespace sentrel
