#pragma once

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"

namespace sentrel {

/// Takes (x, y) to (a x + c y + tx, b x + d y + ty). A view's is applied about its centre.
struct SENTREL_API CGAffineTransform {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double tx = 0;
  double ty = 0;

  static CGAffineTransform makeTranslation(double tx, double ty) { return {1, 0, 0, 1, tx, ty}; }

  /// Clockwise on the screen, in radians.
  static CGAffineTransform makeRotation(double angle);

  bool isIdentity() const noexcept { return *this == CGAffineTransform{}; }

  CGPoint apply(CGPoint point) const noexcept {
    return {a * point.x + c * point.y + tx, b * point.x + d * point.y + ty};
  }

  /// The smallest rectangle around what becomes of `rect`.
  CGRect apply(const CGRect& rect) const noexcept;

  /// The transform that undoes this one; a transform that cannot be undone is its own.
  CGAffineTransform inverted() const noexcept;

  friend bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

}  // namespace sentrel
