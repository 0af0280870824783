#include "device/screen/Presentation.h"

#include <algorithm>
#include <cmath>
#include <variant>

namespace sentrel::screen {
namespace {

void setFrame(Presentation& shown, const CGRect& frame) {
  shown.center = {frame.midX(), frame.midY()};
  shown.bounds.size = frame.size;
}

/// A record whose value is not of its property's type changes nothing.
void apply(Presentation& shown, const CAAnimation& animation, SteadyTime moment) {
  if (animation.kind == CAAnimation::Kind::pushFromRight) {
    shown.pushed = 1 - animation.progress(moment);
    return;
  }
  const CAAnimation::Value value = animation.value(moment);
  const double* number = std::get_if<double>(&value);
  if (animation.keyPath == "frame") {
    if (const auto* frame = std::get_if<CGRect>(&value)) setFrame(shown, *frame);
  } else if (animation.keyPath == "alpha") {
    if (number) shown.alpha = *number;
  } else if (animation.keyPath == "transform") {
    if (const auto* matrix = std::get_if<CGAffineTransform>(&value)) shown.transform = *matrix;
  } else if (animation.keyPath == "backgroundColor") {
    if (const auto* color = std::get_if<UIColor>(&value)) shown.backgroundColor = *color;
  } else if (animation.keyPath == "transform.translation.x" && number) {
    shown.transform.tx += *number;
  }
}

/// Cairo stops drawing altogether once it is handed a matrix that cannot be undone.
bool canBeUndone(const CGAffineTransform& t) {
  const double determinant = t.a * t.d - t.b * t.c;
  return std::isfinite(determinant) && std::abs(determinant) > 1e-9 && std::isfinite(t.tx) &&
         std::isfinite(t.ty);
}

/// Cairo counts in fixed point; nothing beyond this is near any screen.
bool isDrawable(double coordinate) {
  return std::abs(coordinate) < 1e6;
}

}  // namespace

bool Presentation::isVisible() const noexcept {
  return alpha > 0 && canBeUndone(transform) && isDrawable(center.x) && isDrawable(center.y) &&
         isDrawable(bounds.origin.x) && isDrawable(bounds.origin.y) &&
         isDrawable(bounds.size.width) && isDrawable(bounds.size.height);
}

Presentation presentationOf(const UIView& view, SteadyTime moment) {
  Presentation shown{.center = view.center(),
                     .bounds = view.bounds(),
                     .transform = view.transform(),
                     .alpha = view.alpha(),
                     .backgroundColor = view.backgroundColor()};
  for (const CAAnimation& animation : view.layer().animations())
    apply(shown, animation, moment);
  return shown;
}

}  // namespace sentrel::screen
