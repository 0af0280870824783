#include <optional>
#include <utility>

#include "sentrel/Process.h"
#include "sentrel/authui/SNSimplePasscodeView.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/effects/UILookups.h"
#include "sentrel/uikit/UIScreen.h"

namespace sentrel {
namespace {

constexpr Seconds slideDuration{0.3};
constexpr Seconds longDelay{0.2};
constexpr Seconds shortDelay{0.01};

/// Only one generation of the system has the keyboard below the notification centre.
bool isKeyboardCovered() {
  if (!SNUtils::isIOS9() || SNUtils::isIOS10()) return false;
  const auto& controller = Process::current().platform().notificationCenterController;
  return controller && controller->isVisible();
}

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

void SNSimplePasscodeView::showKeyboard(bool animated, bool delay) {
  SNUtils::logMessage("Calling to showKeyboard:");
  if (passcodeTextField_) passcodeTextField_->becomeFirstResponder();
  if (!isKeyboardCovered()) return;
  if (!hackyKB_) borrowKeyboard();
  SNUtils::logMessage("Got the copy of keyboard as: %@", describeForLog(hackyKB_));
  if (!hackyKB_) return;
  const Seconds noDelay = animated ? Seconds(0) : shortDelay;
  Process::current().platform().mainQueue->after(delay ? longDelay : noDelay,
                                                 [weakView = weakSelf(), animated] {
                                                   if (const auto self = weakView.lock())
                                                     self->placeKeyboard(animated);
                                                 });
}

void SNSimplePasscodeView::borrowKeyboard() {
  hackyKB_ = sn__keyBoard();
  const auto bulletinWindow = sn__windowOfClass("SBBulletinWindow");
  SNUtils::logMessage("Got the bulletinWindow as: %@", describeForLog(bulletinWindow));
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
  SNUtils::logMessage("keyboardWillHide: called");
  hideHackyKeyboard();
}

}  // namespace sentrel
