#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIAlertAction.h"
#include "sentrel/uikit/UICollectionView.h"
#include "sentrel/uikit/UIViewController.h"

namespace sentrel {

class AlertPanel;

enum class UIAlertControllerStyle { actionSheet = 0, alert = 1 };

/// The system's alert: title, message, the view of a content controller, and actions as buttons.
class SENTREL_API UIAlertController : public UIViewController {
 public:
  static std::shared_ptr<UIAlertController> alertControllerWithTitle(
      std::optional<std::string> title, std::optional<std::string> message,
      UIAlertControllerStyle preferredStyle);

  UIAlertController(std::optional<std::string> title, std::optional<std::string> message,
                    UIAlertControllerStyle preferredStyle);

  const std::optional<std::string>& message() const noexcept { return message_; }
  UIAlertControllerStyle preferredStyle() const noexcept { return preferredStyle_; }

  const std::vector<std::shared_ptr<UIAlertAction>>& actions() const noexcept { return actions_; }
  /// Ignores null.
  void addAction(std::shared_ptr<UIAlertAction> action);

  const std::shared_ptr<UIViewController>& contentViewController() const noexcept {
    return contentViewController_;
  }
  void setContentViewController(std::shared_ptr<UIViewController> controller);

  // --- The system's own operations, which a subclass may take over ---------------------------

  /// From the moment it is presented until its dismissal begins.
  bool _isPresented() const { return presentingViewController() != nullptr; }

  /// Each dismisses the alert and then, when the dismissal is over, runs the action's handler.
  virtual void _dismissAnimated(bool animated,
                                const std::shared_ptr<UIAlertAction>& triggeringAction);
  virtual void _dismissAnimated(bool animated,
                                const std::shared_ptr<UIAlertAction>& triggeringAction,
                                bool triggeredByPopoverDimmingView, Completion dismissCompletion);
  virtual void _dismissWithAction(const std::shared_ptr<UIAlertAction>& action);

  /// The list that shows the actions; made with the view.
  std::shared_ptr<UICollectionView> _actionCollectionView();
  /// The instance variable of that name, or null: "_actionCollectionView".
  std::shared_ptr<UIView> instanceVariable(std::string_view name);

  // --- The user's side -------------------------------------------------------------------------

  /// Taps the button of `action`, by the operation that the running system uses for it. Nothing
  /// happens while the alert is not presented, and on an action that is disabled or none of its
  /// own.
  void tap(const std::shared_ptr<UIAlertAction>& action);

  void loadView() override;

 protected:
  void showPresentedView(UIWindow& window) override;
  void hidePresentedView() override;

 private:
  std::vector<std::shared_ptr<UIView>> makeButtons();
  AlertPanel& panel();
  void showContent();
  void dismissAndRun(bool animated, const std::shared_ptr<UIAlertAction>& action,
                     Completion completion);

  std::optional<std::string> message_;
  UIAlertControllerStyle preferredStyle_;
  std::vector<std::shared_ptr<UIAlertAction>> actions_;
  std::shared_ptr<UIViewController> contentViewController_;
  std::shared_ptr<UIView> dimming_;
};

}  // namespace sentrel
