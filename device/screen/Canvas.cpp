#include "device/screen/Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

namespace sentrel::screen {
namespace {

int pixels(double points, double scale) {
  const double count = std::ceil(points * scale);
  return count >= 1 ? static_cast<int>(std::min(count, 16384.0)) : 1;
}

}  // namespace

Canvas::Canvas(CGSize points, double scale)
    : Canvas(SurfaceHandle(cairo_image_surface_create(
                 CAIRO_FORMAT_ARGB32, pixels(points.width, scale), pixels(points.height, scale))),
             scale) {}

Canvas::Canvas(SurfaceHandle surface, double scale) : surface_(std::move(surface)), scale_(scale) {
  const cairo_status_t status = cairo_surface_status(surface_.get());
  if (status != CAIRO_STATUS_SUCCESS)
    throw std::runtime_error(std::string("cannot make a picture: ") +
                             cairo_status_to_string(status));
}

void Canvas::clear() {
  const CairoHandle cairo(cairo_create(surface_.get()));
  cairo_set_operator(cairo.get(), CAIRO_OPERATOR_CLEAR);
  cairo_paint(cairo.get());
}

std::uint32_t Canvas::pixel(int x, int y) const {
  if (x < 0 || y < 0 || x >= width() || y >= height()) return 0;
  cairo_surface_flush(surface_.get());
  const unsigned char* row =
      cairo_image_surface_get_data(surface_.get()) +
      static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface_.get());
  std::uint32_t value;
  std::memcpy(&value, row + 4 * static_cast<std::ptrdiff_t>(x), sizeof value);
  return value;
}

}  // namespace sentrel::screen
