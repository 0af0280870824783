#include "sentrel/uikit/CGAffineTransform.h"

#include <algorithm>
#include <cmath>

namespace sentrel {

CGAffineTransform CGAffineTransform::makeRotation(double angle) {
  const double sine = std::sin(angle);
  const double cosine = std::cos(angle);
  return {cosine, sine, -sine, cosine, 0, 0};
}

CGRect CGAffineTransform::apply(const CGRect& rect) const noexcept {
  const CGPoint corners[] = {apply(rect.origin), apply(CGPoint{rect.maxX(), rect.origin.y}),
                             apply(CGPoint{rect.origin.x, rect.maxY()}),
                             apply(CGPoint{rect.maxX(), rect.maxY()})};
  const auto [minX, maxX] = std::minmax({corners[0].x, corners[1].x, corners[2].x, corners[3].x});
  const auto [minY, maxY] = std::minmax({corners[0].y, corners[1].y, corners[2].y, corners[3].y});
  return CGRectMake(minX, minY, maxX - minX, maxY - minY);
}

CGAffineTransform CGAffineTransform::inverted() const noexcept {
  const double determinant = a * d - b * c;
  if (determinant == 0) return *this;
  return {d / determinant,
          -b / determinant,
          -c / determinant,
          a / determinant,
          (c * ty - d * tx) / determinant,
          (b * tx - a * ty) / determinant};
}

}  // namespace sentrel
