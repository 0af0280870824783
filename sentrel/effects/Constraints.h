#pragma once

#include <memory>

#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// A place that a constraint speaks of.
struct Anchor {
  std::shared_ptr<UIView> view;
  NSLayoutAttribute attribute;
};

/// Adds item = multiplier × to + constant to `host`, and answers the constraint.
inline std::shared_ptr<NSLayoutConstraint> constrain(UIView& host, const Anchor& item,
                                                     const Anchor& to, double multiplier = 1,
                                                     double constant = 0) {
  auto constraint = NSLayoutConstraint::constraintWithItem(item.view, item.attribute, to.view,
                                                           to.attribute, multiplier, constant);
  host.addConstraint(constraint);
  return constraint;
}

/// item = constant, added nowhere yet.
inline std::shared_ptr<NSLayoutConstraint> constantConstraint(const Anchor& item, double constant) {
  return NSLayoutConstraint::constraintWithItem(item.view, item.attribute, nullptr,
                                                NSLayoutAttribute::notAnAttribute, 1, constant);
}

/// Adds item = constant to `host`, and answers the constraint.
inline std::shared_ptr<NSLayoutConstraint> constrainToConstant(UIView& host, const Anchor& item,
                                                               double constant) {
  auto constraint = constantConstraint(item, constant);
  host.addConstraint(constraint);
  return constraint;
}

}  // namespace sentrel
