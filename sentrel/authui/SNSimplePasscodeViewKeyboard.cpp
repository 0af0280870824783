#include <optional>
#include <utility>

#include "sentrel/authui/SNSimplePasscodeView.h"
#include "sentrel/bridge/Bridge.h"
#include "sentrel/effects/UILookups.h"
#include "sentrel/uikit/UIScreen.h"

namespace sentrel {
namespace {

constexpr Seconds slideDuration{0.3};
constexpr Seconds longDelay{0.2};
constexpr Seconds shortDelay{0.01};

/// How the log names a view; none for no view.
std::optional<std::string> describeForLog(const std::shared_ptr<UIView>& view) {
  if (!view) return std::nullopt;
  return "<" + view->uiClass().name() + ">";
}

void setTop(UIView& view, double top) {
  CGRect frame = view.frame();
  frame.origin.y = top;
  view.setFrame(frame);
}

}  // namespace

/// Only one generation of the system has the keyboard below the notification centre.
bool SNSimplePasscodeView::isKeyboardCovered() const {
  if (!bridge_.isIOS9() || bridge_.isIOS10()) return false;
  const auto& controller = bridge_.platform().notificationCenterController;
  return controller && controller->isVisible();
}

void SNSimplePasscodeView::showKeyboard(bool animated, bool delay) {
  bridge_.logMessage("Calling to showKeyboard:");
  if (passcodeTextField_) passcodeTextField_->becomeFirstResponder();
  if (!isKeyboardCovered()) return;
  if (!hackyKB_) borrowKeyboard();
  bridge_.logMessage("Got the copy of keyboard as: %@", describeForLog(hackyKB_));
  if (!hackyKB_) return;
  const Seconds noDelay = animated ? Seconds(0) : shortDelay;
  bridge_.platform().mainQueue->after(delay ? longDelay : noDelay,
                                      [weakView = weakSelf(), animated] {
                                        if (const auto self = weakView.lock())
                                          self->placeKeyboard(animated);
                                      });
}

void SNSimplePasscodeView::borrowKeyboard() {
  hackyKB_ = sn__keyBoard();
  const auto bulletinWindow = sn__windowOfClass("SBBulletinWindow");
  bridge_.logMessage("Got the bulletinWindow as: %@", describeForLog(bulletinWindow));
  if (!hackyKB_) return;
  hackyKB_->setAlpha(0);
  if (bulletinWindow) bulletinWindow->addSubview(hackyKB_);
}

void SNSimplePasscodeView::placeKeyboard(bool animated) {
  if (!hackyKB_) return;
  const double bottom = UIScreen::mainScreen().bounds().size.height;
  const double shownTop = bottom - hackyKB_->frame().size.height;
  hackyKB_->setAlpha(1);
  if (!animated) return setTop(*hackyKB_, shownTop);
  setTop(*hackyKB_, bottom);
  UIView::animateWithDuration(slideDuration,
                              [keyboard = hackyKB_, shownTop] { setTop(*keyboard, shownTop); });
}

void SNSimplePasscodeView::hideHackyKeyboard() {
  if (const auto keyboard = std::exchange(hackyKB_, nullptr)) keyboard->removeFromSuperview();
}

void SNSimplePasscodeView::hideKeyboard() {
  hideHackyKeyboard();
  if (passcodeTextField_ && passcodeTextField_->isFirstResponder())
    passcodeTextField_->resignFirstResponder();
}

void SNSimplePasscodeView::keyboardWillHide(const Notification& /*notification*/) {
  bridge_.logMessage("keyboardWillHide: called");
  hideHackyKeyboard();
}

}  // namespace sentrel
