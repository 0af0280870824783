#include "device/screen/Png.h"

#include <cstdint>
#include <stdexcept>
#include <utility>

namespace sentrel::screen {
namespace {

std::uint8_t unmultiplied(std::uint32_t channel, std::uint32_t alpha) {
  return static_cast<std::uint8_t>(alpha == 0 ? 0 : (channel * 255 + alpha / 2) / alpha);
}

/// Whether it is a picture, and not one of finer colours than ours.
bool isOfBytes(cairo_surface_t* surface) {
  if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) return false;
  const cairo_format_t format = cairo_image_surface_get_format(surface);
  return format == CAIRO_FORMAT_ARGB32 || format == CAIRO_FORMAT_RGB24;
}

}  // namespace

void writePng(const Canvas& canvas, const std::string& path) {
  const cairo_status_t status = cairo_surface_write_to_png(canvas.surface(), path.c_str());
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw std::runtime_error("cannot write the picture " + path + ": " +
                           cairo_status_to_string(status));
}

std::shared_ptr<const UIImage> readPng(const std::string& path) {
  SurfaceHandle read(cairo_image_surface_create_from_png(path.c_str()));
  if (!isOfBytes(read.get())) return nullptr;
  const Canvas picture(std::move(read));
  auto image = std::make_shared<UIImage>();
  image->width = picture.width();
  image->height = picture.height();
  for (int y = 0; y < image->height; ++y)
    for (int x = 0; x < image->width; ++x) {
      const std::uint32_t pixel = picture.pixel(x, y);
      const std::uint32_t alpha = pixel >> 24;
      for (const int shift : {16, 8, 0})
        image->rgba.push_back(unmultiplied(pixel >> shift & 255, alpha));
      image->rgba.push_back(static_cast<std::uint8_t>(alpha));
    }
  return image;
}

}  // namespace sentrel::screen
