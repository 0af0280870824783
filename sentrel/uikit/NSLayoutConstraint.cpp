#include "sentrel/uikit/NSLayoutConstraint.h"

#include "sentrel/uikit/UIView.h"

namespace sentrel {

std::shared_ptr<NSLayoutConstraint> NSLayoutConstraint::constraintWithItem(
    const std::shared_ptr<UIView>& item, NSLayoutAttribute attribute,
    const std::shared_ptr<UIView>& toItem, NSLayoutAttribute toAttribute, double multiplier,
    double constant) {
  std::shared_ptr<NSLayoutConstraint> constraint(new NSLayoutConstraint);
  constraint->firstItem_ = item;
  constraint->secondItem_ = toItem;
  constraint->firstAttribute_ = attribute;
  constraint->secondAttribute_ = toAttribute;
  constraint->hasSecondItem_ = toItem != nullptr;
  constraint->multiplier_ = multiplier;
  constraint->constant_ = constant;
  return constraint;
}

void NSLayoutConstraint::setConstant(double constant) {
  if (constant == constant_) return;
  constant_ = constant;
  if (const auto item = firstItem()) item->setNeedsLayout();
}

}  // namespace sentrel
