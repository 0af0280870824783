#include <cstddef>
#include <cstdint>
#include <cstring>

#include "device/screen/ElementPainters.h"
#include "sentrel/uikit/UIImageView.h"

namespace sentrel::screen {
namespace {

std::uint32_t multiplied(std::uint32_t channel, std::uint32_t alpha) {
  return (channel * alpha + 127) / 255;
}

std::uint32_t pixelOf(const std::uint8_t* rgba) {
  const std::uint32_t alpha = rgba[3];
  return alpha << 24 | multiplied(rgba[0], alpha) << 16 | multiplied(rgba[1], alpha) << 8 |
         multiplied(rgba[2], alpha);
}

bool isWhole(const UIImage& image) {
  return image.width > 0 && image.height > 0 && image.width <= 16384 && image.height <= 16384 &&
         image.rgba.size() ==
             static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) * 4;
}

SurfaceHandle surfaceOf(const UIImage& image) {
  SurfaceHandle made(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, image.width, image.height));
  unsigned char* row = cairo_image_surface_get_data(made.get());
  if (!row) return made;
  const std::uint8_t* from = image.rgba.data();
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x, from += 4) {
      const std::uint32_t pixel = pixelOf(from);
      std::memcpy(row + 4 * static_cast<std::ptrdiff_t>(x), &pixel, sizeof pixel);
    }
    row += cairo_image_surface_get_stride(made.get());
  }
  cairo_surface_mark_dirty(made.get());
  return made;
}

}  // namespace

void paintImage(const UIImageView& view, const CGRect& bounds, PaintContext& context) {
  if (!view.image() || !isWhole(*view.image())) return;
  const UIImage& image = *view.image();
  const SurfaceHandle picture = surfaceOf(image);
  if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS) return;
  const SavedState saved(context.cairo);
  cairo_rectangle(context.cairo, bounds.origin.x, bounds.origin.y, bounds.size.width,
                  bounds.size.height);
  cairo_clip(context.cairo);
  cairo_translate(context.cairo, bounds.origin.x, bounds.origin.y);
  cairo_scale(context.cairo, bounds.size.width / image.width, bounds.size.height / image.height);
  cairo_set_source_surface(context.cairo, picture.get(), 0, 0);
  // Else a stretched picture fades out at its edges.
  cairo_pattern_set_extend(cairo_get_source(context.cairo), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(context.cairo), CAIRO_FILTER_GOOD);
  cairo_paint(context.cairo);
}

}  // namespace sentrel::screen
