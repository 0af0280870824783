#pragma once

#include <memory>

#include "sentrel/platform/Export.h"

namespace sentrel {

class UIView;

enum class NSLayoutAttribute {
  notAnAttribute = 0,
  left = 1,
  right = 2,
  top = 3,
  bottom = 4,
  width = 7,
  height = 8,
  centerX = 9,
  centerY = 10
};

/// first.attribute = multiplier × second.attribute + constant, or = constant where there is no
/// second item. Counts while the view that it was added to is in the laid-out tree and both its
/// items are inside that view. Does not keep its items alive.
class SENTREL_API NSLayoutConstraint {
 public:
  static std::shared_ptr<NSLayoutConstraint> constraintWithItem(
      const std::shared_ptr<UIView>& item, NSLayoutAttribute attribute,
      const std::shared_ptr<UIView>& toItem, NSLayoutAttribute toAttribute, double multiplier,
      double constant);

  /// Null when the view is gone.
  std::shared_ptr<UIView> firstItem() const { return firstItem_.lock(); }
  std::shared_ptr<UIView> secondItem() const { return secondItem_.lock(); }
  NSLayoutAttribute firstAttribute() const noexcept { return firstAttribute_; }
  NSLayoutAttribute secondAttribute() const noexcept { return secondAttribute_; }

  /// Whether the constraint was made with a second item, be it gone or not.
  bool hasSecondItem() const noexcept { return hasSecondItem_; }

  double multiplier() const noexcept { return multiplier_; }
  double constant() const noexcept { return constant_; }
  void setConstant(double constant);

 private:
  NSLayoutConstraint() = default;

  std::weak_ptr<UIView> firstItem_;
  std::weak_ptr<UIView> secondItem_;
  NSLayoutAttribute firstAttribute_ = NSLayoutAttribute::notAnAttribute;
  NSLayoutAttribute secondAttribute_ = NSLayoutAttribute::notAnAttribute;
  bool hasSecondItem_ = false;
  double multiplier_ = 1;
  double constant_ = 0;
};

}  // namespace sentrel
