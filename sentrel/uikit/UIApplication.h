#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"
#include "sentrel/platform/Platform.h"
#include "sentrel/uikit/UIResponder.h"

namespace sentrel {

class UIWindow;

/// Posted to the local centre when the first responder gives the typed input up and no other takes
/// it.
inline constexpr std::string_view UIKeyboardWillHideNotification = "UIKeyboardWillHideNotification";

// Posted to the local centre, by whoever runs the application, as it comes and goes and turns.
inline constexpr std::string_view UIApplicationDidEnterBackgroundNotification =
    "UIApplicationDidEnterBackgroundNotification";
inline constexpr std::string_view UIApplicationWillEnterForegroundNotification =
    "UIApplicationWillEnterForegroundNotification";
inline constexpr std::string_view UIApplicationWillResignActiveNotification =
    "UIApplicationWillResignActiveNotification";
inline constexpr std::string_view UIApplicationDidBecomeActiveNotification =
    "UIApplicationDidBecomeActiveNotification";
inline constexpr std::string_view UIApplicationDidChangeStatusBarOrientationNotification =
    "UIApplicationDidChangeStatusBarOrientationNotification";
inline constexpr std::string_view UIApplicationDidChangeStatusBarFrameNotification =
    "UIApplicationDidChangeStatusBarFrameNotification";

enum class UIInterfaceOrientation {
  portrait = 1,
  portraitUpsideDown = 2,
  landscapeRight = 3,
  landscapeLeft = 4
};

/// The private operation by which the running system closes an alert whose action was tapped.
enum class UIAlertDismissal {
  /// `_dismissWithAction:`
  withAction,
  /// `_dismissAnimated:triggeringAction:`
  animated,
  /// `_dismissAnimated:triggeringAction:triggeredByPopoverDimmingView:dismissCompletion:`
  animatedWithCompletion
};

/// One process's user interface: its windows and who in it receives typed input.
class SENTREL_API UIApplication : public std::enable_shared_from_this<UIApplication> {
 public:
  /// The current process's.
  static UIApplication& sharedApplication();

  /// `platform` outlives the application.
  explicit UIApplication(Platform& platform) : platform_(platform) {}

  /// What views and their animations ask of the device.
  Platform& platform() const noexcept { return platform_; }

  /// Back to front: by level, those of one level in the order in which they were made. Hidden ones
  /// are among them.
  std::vector<std::shared_ptr<UIWindow>> windows() const;

  /// Null where no window was made key, or the one that was is gone.
  std::shared_ptr<UIWindow> keyWindow() const { return keyWindow_.lock(); }
  void setKeyWindow(const std::shared_ptr<UIWindow>& window) { keyWindow_ = window; }

  std::shared_ptr<UIResponder> firstResponder() const { return firstResponder_.lock(); }
  /// Only tells who it is; nobody is asked and nothing is posted. Null for none.
  void setFirstResponder(const std::shared_ptr<UIResponder>& responder) {
    firstResponder_ = responder;
  }

  /// Takes the typed input from whoever has it, unasked.
  void giveUpFirstResponder();

  UIInterfaceOrientation statusBarOrientation() const noexcept { return statusBarOrientation_; }
  void setStatusBarOrientation(UIInterfaceOrientation value) noexcept {
    statusBarOrientation_ = value;
  }
  CGRect statusBarFrame() const noexcept { return statusBarFrame_; }
  void setStatusBarFrame(const CGRect& frame) noexcept { statusBarFrame_ = frame; }

  UIAlertDismissal alertDismissal() const noexcept { return alertDismissal_; }
  void setAlertDismissal(UIAlertDismissal value) noexcept { alertDismissal_ = value; }

 private:
  friend class UIWindow;

  Platform& platform_;

  /// In the order in which they were made; each leaves the list when it goes.
  std::vector<UIWindow*> windows_;
  std::vector<std::shared_ptr<UIWindow>> keptWindows_;
  std::weak_ptr<UIWindow> keyWindow_;
  std::weak_ptr<UIResponder> firstResponder_;
  UIInterfaceOrientation statusBarOrientation_ = UIInterfaceOrientation::portrait;
  CGRect statusBarFrame_ = CGRectMake(0, 0, 375, 20);
  UIAlertDismissal alertDismissal_ = UIAlertDismissal::animatedWithCompletion;
};

}  // namespace sentrel
