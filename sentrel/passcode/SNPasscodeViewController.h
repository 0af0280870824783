#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "sentrel/passcode/InterfaceOrientation.h"
#include "sentrel/passcode/PasscodeAppearance.h"
#include "sentrel/passcode/PasscodeElements.h"
#include "sentrel/passcode/PasscodeFlow.h"
#include "sentrel/platform/Export.h"
#include "sentrel/platform/NotificationCenter.h"
#include "sentrel/uikit/UITextFieldDelegate.h"
#include "sentrel/uikit/UIViewController.h"

namespace sentrel {

class Bridge;
class PasscodeView;

/// A full-screen passcode screen: a lock screen over everything that a process shows, and the
/// settings flows that enable, change and turn off a passcode. Its flow is PasscodeFlow; here it
/// gets a view, a window or a host to stand in, and ears for the application's life-cycle.
///
/// It stores nothing: whoever uses it sets a delegate first, and keeps it alive. Defaults are
/// loaded when the object is made; with a delegate at hand, _loadDefaults loads them again.
class SENTREL_API SNPasscodeViewController final : public UIViewController,
                                                   public PasscodeFlow,
                                                   public UITextFieldDelegate {
 public:
  /// The current process's own screen.
  static std::shared_ptr<SNPasscodeViewController> sharedUser();

  /// `bridge` outlives the screen.
  static std::shared_ptr<SNPasscodeViewController> makeShared(Bridge& bridge);
  ~SNPasscodeViewController() override;

  // --- The shared screen's operations, by one word ------------------------------------------

  static bool doesPasscodeExist() { return sharedUser()->_doesPasscodeExist(); }
  static void deletePasscode() { sharedUser()->_deletePasscode(); }
  static void close() { sharedUser()->_close(); }
  static void deletePasscodeAndClose() {
    deletePasscode();
    close();
  }
  static double timerDuration() { return sharedUser()->_timerDuration(); }
  static void saveTimerDuration(double seconds) { sharedUser()->_saveTimerDuration(seconds); }
  static double timerStartTime() { return sharedUser()->_timerStartTime(); }
  static void saveTimerStartTime() { sharedUser()->_saveTimerStartTime(); }
  static bool didPasscodeTimerEnd() { return sharedUser()->_didPasscodeTimerEnd(); }

  /// Points, whichever way the interface is turned.
  static double getStatusBarHeight();

  // --- Looks -------------------------------------------------------------------------------

  /// Miscellaneous, strings, gaps, fonts, colours, storage names, and what the delegate says of the
  /// fingerprint.
  void _loadDefaults();

  PasscodeAppearance& appearance() noexcept { return appearance_; }
  bool hidesBackButton() const noexcept { return appearance_.hidesBackButton; }
  void setHidesBackButton(bool value) noexcept { appearance_.hidesBackButton = value; }
  bool hidesCancelButton() const noexcept { return appearance_.hidesCancelButton; }
  void setHidesCancelButton(bool value) noexcept { appearance_.hidesCancelButton = value; }

  /// Empty before the view is loaded.
  const PasscodeElements& elements() const;
  /// Hidden unless the application is away; null until it is needed.
  const std::shared_ptr<UIView>& coverView() const noexcept { return coverView_; }

  // --- Typing ------------------------------------------------------------------------------

  /// The OK button.
  void _validateComplexPasscode();

  bool textFieldShouldBeginEditing(UITextField& textField) override;
  bool textFieldShouldEndEditing(UITextField& textField) override;
  bool textField(UITextField& textField, NSRange shouldChangeCharactersInRange,
                 const std::string& replacementString) override;

  // --- Life-cycle --------------------------------------------------------------------------

  bool isAppNotificationsObserved() const noexcept { return appNotificationsObserved_; }
  void _addObservers();
  /// For background and foreground alone, also of a screen that was never shown.
  void enablePasscodeWhenApplicationEntersBackground();
  void disablePasscodeWhenApplicationEntersBackground();

  // --- Orientation -------------------------------------------------------------------------

  /// A mask of UIInterfaceOrientationMaskFromOrientation's bits.
  std::uint64_t supportedInterfaceOrientations() const;
  /// One of UIInterfaceOrientation's numbers.
  std::int64_t desiredOrientation() const;
  void rotateAccordingToStatusBarOrientationAndSupportedOrientations();
  void setIfNotEqualTransform(const CGAffineTransform& transform, const CGRect& frame);
  void statusBarFrameOrOrientationChanged(const Notification& notification);

  // --- Building ----------------------------------------------------------------------------

  void loadView() override;
  void viewDidLoad() override;
  void didMoveToParentViewController(const std::shared_ptr<UIViewController>& parent) override;

  /// Wraps the screen in a navigation of its own, or pushes it on the host's.
  void _prepareNavigationControllerWithController(const std::shared_ptr<UIViewController>& host);

 protected:
  std::weak_ptr<PasscodeFlow> weakFlow() override { return weakSelf(); }
  bool isScreenLoaded() const override { return isBuilt_; }
  bool isEntryFieldEditing() const override;
  double failureCornerRadius() const override;
  void show(const PasscodeDisplay& display) override;
  void showTitle(const std::string& title) override { setTitle(title); }
  void layOutAgain() override;
  void makeDigitBoxes() override;
  void emptyEntryField() override;
  void startEditing() override;
  void endEditing() override;
  void shakeDigitBoxes(const CAAnimation& shake) override;
  void slideStep(const CAAnimation& slide) override;
  void slideAway(Seconds duration) override;
  void present(const std::shared_ptr<UIViewController>& host) override;
  bool coverWindow(bool animated) override;
  void leave(PasscodeLeaving way) override;
  void showNavBar(const std::string& logoutTitle) override;
  void removeNavBar() override;
  std::string navBarButtonTitle() const override;
  void showCover() override;
  void hideCover() override;

 private:
  using Reaction = void (SNPasscodeViewController::*)(const Notification& notification);

  explicit SNPasscodeViewController(Bridge& bridge);

  std::weak_ptr<SNPasscodeViewController> weakSelf();
  bool isTabletInterface() const;
  bool turnsByItself() const;
  std::shared_ptr<UIView> firstWindow() const;
  UIKeyboardType keyboardType() const;
  void observe(std::string_view name, Reaction reaction);
  void willResignActive(const Notification&) { _applicationWillResignActive(); }
  void didBecomeActive(const Notification&) { _applicationDidBecomeActive(); }
  void didEnterBackground(const Notification&) { _applicationDidEnterBackground(); }
  void willEnterForeground(const Notification&) { _applicationWillEnterForeground(); }
  void keyboardWillHide(const Notification&);
  void makeCover();
  std::shared_ptr<UIBarButtonItem> makeBarButton(const std::string& title,
                                                 void (PasscodeFlow::*action)());
  void colour(UINavigationBar& bar) const;
  void presentModally(const std::shared_ptr<UIViewController>& host);
  void popFromNavigation(bool animated);
  CGPoint centerOutside() const;
  double topInset() const;

  Bridge& bridge_;
  PasscodeAppearance appearance_;
  std::shared_ptr<PasscodeView> passcodeView_;
  std::shared_ptr<UIView> coverView_;
  std::map<std::string, Observation, std::less<>> observations_;
  bool appNotificationsObserved_ = false;
  bool isBuilt_ = false;
  bool isBeingPresented_ = false;
};

}  // namespace sentrel
