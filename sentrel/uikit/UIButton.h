#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

enum class UIButtonType { custom = 0, system = 1 };
enum class UIControlState { normal = 0, highlighted = 1, disabled = 2 };
enum UIControlEvents : unsigned { UIControlEventTouchUpInside = 64 };

/// Shows its state's title in `titleLabel`, a subview that fills it; a system button
/// leaves a margin on either side.
class SENTREL_API UIButton : public UIView {
 public:
  using Action = std::function<void(const std::shared_ptr<UIButton>& sender)>;

  static std::shared_ptr<UIButton> buttonWithType(UIButtonType type);

  explicit UIButton(UIButtonType type, const UIClass& uiClass = staticClass());

  static const UIClass& staticClass();

  UIButtonType buttonType() const noexcept { return type_; }
  const std::shared_ptr<UILabel>& titleLabel() const noexcept { return titleLabel_; }

  /// A state without a title or colour of its own has the normal state's.
  void setTitle(std::string title, UIControlState forState);
  void setTitleColor(UIColor color, UIControlState forState);
  const std::string& currentTitle() const noexcept { return titleLabel_->text(); }
  const UIColor& currentTitleColor() const noexcept { return titleLabel_->textColor(); }

  bool isEnabled() const noexcept { return enabled_; }
  void setEnabled(bool value);
  bool isHighlighted() const noexcept { return highlighted_; }
  /// Pressed: the finger is on the button.
  void setHighlighted(bool value);
  UIControlState state() const noexcept;

  /// Runs `action` for every event in `forControlEvents`, after the actions added before.
  void addTarget(Action action, unsigned forControlEvents);
  void sendActionsForControlEvents(unsigned events);

  /// The user's side: does nothing on a button that is disabled, hidden or ignores touches.
  void tap();

  void layoutSubviews() override;
  std::optional<CGSize> intrinsicContentSize(double maxWidth) const override;

 private:
  struct Target {
    Action action;
    unsigned events;
  };

  void showState();

  UIButtonType type_;
  std::shared_ptr<UILabel> titleLabel_;
  std::map<UIControlState, std::string> titles_;
  std::map<UIControlState, UIColor> titleColors_;
  std::vector<Target> targets_;
  bool enabled_ = true;
  bool highlighted_ = false;
};

}  // namespace sentrel
