#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

class AlertPanel;
class UIAlertView;

class SENTREL_API UIAlertViewDelegate {
 public:
  virtual ~UIAlertViewDelegate() = default;

  /// When the dismissal is over.
  virtual void alertView(UIAlertView& alertView, int didDismissWithButtonIndex) = 0;
};

/// The alert of the older systems: a view that shows itself in a window of its own. While it is
/// shown the window owns it, and the process's application owns the window.
class SENTREL_API UIAlertView : public UIView {
 public:
  UIAlertView(std::string title, std::optional<std::string> message,
              std::weak_ptr<UIAlertViewDelegate> delegate, std::string cancelButtonTitle,
              const UIClass& uiClass = staticClass());
  ~UIAlertView() override;

  static const UIClass& staticClass();

  const std::string& title() const noexcept { return title_; }
  const std::optional<std::string>& message() const noexcept { return message_; }
  std::shared_ptr<UIAlertViewDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(std::weak_ptr<UIAlertViewDelegate> delegate) { delegate_ = std::move(delegate); }

  /// Answers the new button's index.
  int addButtonWithTitle(std::string title);
  int numberOfButtons() const noexcept { return static_cast<int>(buttonTitles_.size()); }
  /// Empty for an index that no button has.
  std::string buttonTitleAtIndex(int index) const;
  int cancelButtonIndex() const noexcept { return 0; }

  /// The view shown between message and buttons, at its own height; null for none.
  const std::shared_ptr<UIView>& accessoryView() const noexcept { return accessoryView_; }
  void setAccessoryView(std::shared_ptr<UIView> view);

  void show();
  bool isVisible() const noexcept { return !hostWindow_.expired(); }

  /// Takes the alert away at once, and tells the delegate when the animation's time is over. Does
  /// nothing when it is not shown.
  void dismissWithClickedButtonIndex(int index, bool animated);
  /// As with the cancel button, but the delegate is not told.
  void dismissAnimated(bool animated);

  // --- The system's own operations -------------------------------------------------------------

  virtual void _dismissForTappedIndex(int index);
  /// Whether a tap on the button makes the alert ready to go: what is edited in it stops.
  virtual bool _prepareToDismissForTappedIndex(int index);

  /// Either may be empty where the running system's alerts do not answer it. Both are set in a new
  /// alert.
  std::function<void(const std::string& title, int buttonIndex)> _updateButtonTitle;
  std::function<void(int index, const std::string& toTitle)> _changeButtonTitleAtIndex;

  // --- The user's side -------------------------------------------------------------------------

  /// Nothing happens while the alert is not shown, and for an index that no button has.
  void tap(int index);

 private:
  void setButtonTitle(int index, const std::string& title);
  std::vector<std::shared_ptr<UIView>> makeButtons();
  bool hide();

  std::string title_;
  std::optional<std::string> message_;
  std::weak_ptr<UIAlertViewDelegate> delegate_;
  std::vector<std::string> buttonTitles_;
  std::shared_ptr<UIView> accessoryView_;
  std::shared_ptr<AlertPanel> panel_;
  std::weak_ptr<UIWindow> hostWindow_;
};

}  // namespace sentrel
