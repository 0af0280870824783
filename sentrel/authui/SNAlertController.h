#pragma once

#include <memory>
#include <optional>
#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIAlertController.h"

namespace sentrel {

/// The alert that holds a prompt. It outlives a tap on its switch button, which does what the
/// button is for and gives it its next title; every other action closes it. When it goes, the
/// overlay window closes.
class SENTREL_API SNAlertController : public UIAlertController {
 public:
  using UIAlertController::UIAlertController;

  static std::shared_ptr<SNAlertController> alertControllerWithTitle(
      std::optional<std::string> title, std::optional<std::string> message,
      UIAlertControllerStyle preferredStyle);

  /// Whether the alert may go because of `action`, which may be null. The switch button is handled
  /// on the way. With `checkForIOS9` system 9 and later close the alert whatever the action is.
  bool handleDismissAnimated(bool animated, const std::shared_ptr<UIAlertAction>& triggeringAction,
                             bool checkForIOS9);

  void _dismissAnimated(bool animated,
                        const std::shared_ptr<UIAlertAction>& triggeringAction) override;
  void _dismissAnimated(bool animated, const std::shared_ptr<UIAlertAction>& triggeringAction,
                        bool triggeredByPopoverDimmingView, Completion dismissCompletion) override;
  void _dismissWithAction(const std::shared_ptr<UIAlertAction>& action) override;

  void dismissViewControllerAnimated(bool animated, Completion completion) override;

  bool isAlertPresented() const { return _isPresented(); }

 private:
  void reloadActionsLater();
};

}  // namespace sentrel
