#pragma once

#include <cstdint>

#include "device/screen/Handles.h"
#include "sentrel/platform/Geometry.h"

namespace sentrel::screen {

/// A picture to paint on: 32-bit pixels, colours multiplied by alpha, transparent at first.
class Canvas {
 public:
  /// At most 16384 pixels each way; at least one. Throws std::runtime_error where there is no
  /// memory for it.
  Canvas(CGSize points, double scale);

  /// Takes over a picture of whole pixels.
  explicit Canvas(SurfaceHandle surface, double scale = 1);

  /// Pixels.
  int width() const { return cairo_image_surface_get_width(surface_.get()); }
  int height() const { return cairo_image_surface_get_height(surface_.get()); }
  /// Pixels a point.
  double scale() const noexcept { return scale_; }
  cairo_surface_t* surface() const noexcept { return surface_.get(); }

  /// Makes every pixel transparent again.
  void clear();

  /// One pixel as it lies in memory: alpha in the highest byte, then red, green and blue, each
  /// multiplied by alpha. 0 outside the picture.
  std::uint32_t pixel(int x, int y) const;

 private:
  SurfaceHandle surface_;
  double scale_;
};

}  // namespace sentrel::screen
