#pragma once

namespace sentrel {

/// Lengths and positions in points, y growing downwards.
struct CGPoint {
  double x = 0;
  double y = 0;

  friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
  double width = 0;
  double height = 0;

  friend bool operator==(const CGSize&, const CGSize&) = default;
};

/// A rectangle as it was given: sizes may be zero or negative.
struct CGRect {
  CGPoint origin;
  CGSize size;

  double maxX() const noexcept { return origin.x + size.width; }
  double maxY() const noexcept { return origin.y + size.height; }
  double midX() const noexcept { return origin.x + size.width / 2; }
  double midY() const noexcept { return origin.y + size.height / 2; }

  friend bool operator==(const CGRect&, const CGRect&) = default;
};

constexpr CGRect CGRectMake(double x, double y, double width, double height) {
  return {{x, y}, {width, height}};
}

}  // namespace sentrel
