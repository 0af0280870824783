#include "sentrel/uikit/UIButton.h"

#include <utility>

namespace sentrel {
namespace {

/// Points that a system button's title keeps off either side.
constexpr double systemTitleMargin = 8;

}  // namespace

std::shared_ptr<UIButton> UIButton::buttonWithType(UIButtonType type) {
  return std::make_shared<UIButton>(type);
}

UIButton::UIButton(UIButtonType type, const UIClass& uiClass)
    : UIView({}, uiClass), type_(type), titleLabel_(std::make_shared<UILabel>()) {
  titleLabel_->setTextAlignment(NSTextAlignment::center);
  const bool isSystem = type == UIButtonType::system;
  titleColors_.emplace(UIControlState::normal,
                       isSystem ? UIColor::systemBlueColor() : UIColor::whiteColor());
  if (isSystem) titleColors_.emplace(UIControlState::disabled, UIColor::lightGrayColor());
  addSubview(titleLabel_);
  showState();
}

const UIClass& UIButton::staticClass() {
  static const UIClass uiClass("UIButton", &UIView::staticClass());
  return uiClass;
}

void UIButton::setTitle(std::string title, UIControlState forState) {
  titles_.insert_or_assign(forState, std::move(title));
  showState();
}

void UIButton::setTitleColor(UIColor color, UIControlState forState) {
  titleColors_.insert_or_assign(forState, color);
  showState();
}

void UIButton::setEnabled(bool value) {
  enabled_ = value;
  showState();
}

void UIButton::setHighlighted(bool value) {
  highlighted_ = value;
  showState();
}

UIControlState UIButton::state() const noexcept {
  if (!enabled_) return UIControlState::disabled;
  return highlighted_ ? UIControlState::highlighted : UIControlState::normal;
}

void UIButton::showState() {
  const auto ofState = [this](const auto& values) {
    const auto own = values.find(state());
    return own == values.end() ? values.find(UIControlState::normal) : own;
  };
  const auto title = ofState(titles_);
  titleLabel_->setText(title == titles_.end() ? "" : title->second);
  titleLabel_->setTextColor(ofState(titleColors_)->second);
}

void UIButton::addTarget(Action action, unsigned forControlEvents) {
  targets_.push_back({std::move(action), forControlEvents});
}

void UIButton::sendActionsForControlEvents(unsigned events) {
  const auto self = std::static_pointer_cast<UIButton>(shared_from_this());
  const auto targets = targets_;
  for (const Target& target : targets)
    if (target.action && (target.events & events)) target.action(self);
}

void UIButton::tap() {
  if (enabled_ && !isHidden() && isUserInteractionEnabled())
    sendActionsForControlEvents(UIControlEventTouchUpInside);
}

void UIButton::layoutSubviews() {
  UIView::layoutSubviews();
  const double margin = type_ == UIButtonType::system ? systemTitleMargin : 0;
  titleLabel_->setFrame(CGRectMake(bounds().origin.x + margin, bounds().origin.y,
                                   bounds().size.width - 2 * margin, bounds().size.height));
}

std::optional<CGSize> UIButton::intrinsicContentSize(double maxWidth) const {
  return titleLabel_->intrinsicContentSize(maxWidth);
}

}  // namespace sentrel
