#include "device/screen/Png.h"

#include <stdexcept>
#include <utility>

namespace sentrel::screen {
namespace {

void require(cairo_status_t status, const char* what, const std::string& path) {
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw std::runtime_error(std::string("cannot ") + what + " the picture " + path + ": " +
                           cairo_status_to_string(status));
}

/// In the one format that a canvas has, whatever the file's.
SurfaceHandle converted(cairo_surface_t* picture) {
  SurfaceHandle made(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                                cairo_image_surface_get_width(picture),
                                                cairo_image_surface_get_height(picture)));
  const CairoHandle cairo(cairo_create(made.get()));
  cairo_set_source_surface(cairo.get(), picture, 0, 0);
  cairo_set_operator(cairo.get(), CAIRO_OPERATOR_SOURCE);
  cairo_paint(cairo.get());
  return made;
}

}  // namespace

void writePng(const Canvas& canvas, const std::string& path) {
  require(cairo_surface_write_to_png(canvas.surface(), path.c_str()), "write", path);
}

Canvas readPng(const std::string& path) {
  const SurfaceHandle read(cairo_image_surface_create_from_png(path.c_str()));
  require(cairo_surface_status(read.get()), "read", path);
  return Canvas(converted(read.get()));
}

std::optional<std::size_t> differingPixels(const Canvas& one, const Canvas& other) {
  if (one.width() != other.width() || one.height() != other.height()) return std::nullopt;
  std::size_t count = 0;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x)
      if (one.pixel(x, y) != other.pixel(x, y)) ++count;
  return count;
}

}  // namespace sentrel::screen
