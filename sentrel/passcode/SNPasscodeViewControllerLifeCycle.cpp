// What the screen hears of the application that it is part of, and what hides it meanwhile.

#include "sentrel/bridge/Bridge.h"
#include "sentrel/passcode/PasscodeView.h"
#include "sentrel/passcode/SNPasscodeViewController.h"
#include "sentrel/uikit/UIApplication.h"

namespace sentrel {

/// In the place of an observer of that name, whoever registered it.
void SNPasscodeViewController::observe(std::string_view name, Reaction reaction) {
  observations_[std::string(name)] = bridge_.platform().localCenter->addObserver(
      std::string(name), [weak = weakSelf(), reaction](const Notification& notification) {
        if (const auto self = weak.lock()) (self.get()->*reaction)(notification);
      });
}

void SNPasscodeViewController::_addObservers() {
  using Self = SNPasscodeViewController;
  appNotificationsObserved_ = true;
  enablePasscodeWhenApplicationEntersBackground();
  observe(UIApplicationWillResignActiveNotification, &Self::willResignActive);
  observe(UIApplicationDidBecomeActiveNotification, &Self::didBecomeActive);
  observe(UIApplicationDidChangeStatusBarOrientationNotification,
          &Self::statusBarFrameOrOrientationChanged);
  observe(UIApplicationDidChangeStatusBarFrameNotification,
          &Self::statusBarFrameOrOrientationChanged);
  observe(UIKeyboardWillHideNotification, &Self::keyboardWillHide);
}

void SNPasscodeViewController::enablePasscodeWhenApplicationEntersBackground() {
  using Self = SNPasscodeViewController;
  observe(UIApplicationDidEnterBackgroundNotification, &Self::didEnterBackground);
  observe(UIApplicationWillEnterForegroundNotification, &Self::willEnterForeground);
}

void SNPasscodeViewController::disablePasscodeWhenApplicationEntersBackground() {
  observations_.erase(std::string(UIApplicationDidEnterBackgroundNotification));
  observations_.erase(std::string(UIApplicationWillEnterForegroundNotification));
}

void SNPasscodeViewController::keyboardWillHide(const Notification& /*notification*/) {
  view()->setNeedsLayout();
}

// --- The cover -----------------------------------------------------------------------------------

void SNPasscodeViewController::makeCover() {
  coverView_ = std::make_shared<UIView>();
  coverView_->setBackgroundColor(appearance_.coverViewBackgroundColor);
  coverView_->setTag(appearance_.coverViewTag);
  coverView_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth |
                                  UIViewAutoresizingFlexibleHeight);
  coverView_->setHidden(/*hidden=*/true);
}

void SNPasscodeViewController::showCover() {
  if (!coverView_) makeCover();
  coverView_->setHidden(/*hidden=*/false);
  const auto window = firstWindow();
  if (!window) return;
  // What came up since it was added does not stand before it.
  const auto there = window->viewWithTag(appearance_.coverViewTag);
  if (there && there != coverView_) return;
  coverView_->setFrame(window->bounds());
  window->addSubview(coverView_);
}

void SNPasscodeViewController::hideCover() {
  if (coverView_) coverView_->setHidden(/*hidden=*/true);
}

}  // namespace sentrel
