#pragma once

#include <optional>

#include "sentrel/platform/Geometry.h"
#include "sentrel/platform/Seconds.h"
#include "sentrel/uikit/CGAffineTransform.h"
#include "sentrel/uikit/UIColor.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel::screen {

/// A view as it is to be seen at one moment: its own properties, with those of running animations
/// in place of them.
struct Presentation {
  /// In the superview's coordinates.
  CGPoint center;
  /// In the view's own; the size may be zero or negative.
  CGRect bounds;
  CGAffineTransform transform;
  double alpha = 1;
  std::optional<UIColor> backgroundColor;
  /// How much of its width the content still has to go to its place, coming from the right.
  double pushed = 0;

  /// Whether anything of the view, or of what is inside it, can be seen.
  bool isVisible() const noexcept;
  /// Whether there is a rectangle to paint.
  bool hasArea() const noexcept { return bounds.size.width > 0 && bounds.size.height > 0; }
};

Presentation presentationOf(const UIView& view, SteadyTime moment);

}  // namespace sentrel::screen
