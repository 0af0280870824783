#include <algorithm>
#include <cmath>
#include <optional>

#include "device/screen/Blur.h"
#include "device/screen/ElementPainters.h"
#include "device/screen/LayerPainter.h"
#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel::screen {
namespace {

/// Points.
constexpr double blurSigma = 14;
constexpr double colorGain = 1.8;

/// A rectangle of whole pixels.
struct PixelRect {
  double left, top, width, height;
};

void include(cairo_t* cairo, double x, double y, double (&box)[4]) {
  cairo_user_to_device(cairo, &x, &y);
  box[0] = std::min(box[0], x);
  box[1] = std::min(box[1], y);
  box[2] = std::max(box[2], x);
  box[3] = std::max(box[3], y);
}

/// The pixels that `bounds` covers of what can be painted on; none if there are none.
std::optional<PixelRect> coveredPixels(const CGRect& bounds, cairo_t* cairo) {
  const SavedState saved(cairo);
  cairo_rectangle(cairo, bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height);
  cairo_clip(cairo);
  double left, top, right, bottom;
  cairo_clip_extents(cairo, &left, &top, &right, &bottom);
  if (!(right > left && bottom > top)) return std::nullopt;
  double box[] = {HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
  for (const double x : {left, right})
    for (const double y : {top, bottom})
      include(cairo, x, y, box);
  return PixelRect{std::floor(box[0]), std::floor(box[1]), std::ceil(box[2]) - std::floor(box[0]),
                   std::ceil(box[3]) - std::floor(box[1])};
}

/// What has been painted there so far, each side `shrink` times as small.
SurfaceHandle cutOut(const PixelRect& rect, double shrink, const PaintContext& context) {
  SurfaceHandle made(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                                static_cast<int>(std::ceil(rect.width / shrink)),
                                                static_cast<int>(std::ceil(rect.height / shrink))));
  const CairoHandle cairo(cairo_create(made.get()));
  cairo_scale(cairo.get(), 1 / shrink, 1 / shrink);
  const auto add = [&](cairo_surface_t* surface) {
    cairo_set_source_surface(cairo.get(), surface, -rect.left, -rect.top);
    cairo_pattern_set_filter(cairo_get_source(cairo.get()), CAIRO_FILTER_GOOD);
    // Else the outermost row, half beyond the picture, would be half transparent.
    cairo_pattern_set_extend(cairo_get_source(cairo.get()), CAIRO_EXTEND_PAD);
    cairo_paint(cairo.get());
  };
  for (cairo_surface_t* surface : context.surfacesBelow)
    add(surface);
  add(cairo_get_group_target(context.cairo));
  return made;
}

void paintEnlarged(cairo_surface_t* picture, const PixelRect& rect, double shrink,
                   PaintContext& context) {
  cairo_identity_matrix(context.cairo);
  cairo_translate(context.cairo, rect.left, rect.top);
  cairo_scale(context.cairo, shrink, shrink);
  cairo_set_source_surface(context.cairo, picture, 0, 0);
  cairo_pattern_set_extend(cairo_get_source(context.cairo), CAIRO_EXTEND_PAD);
  cairo_pattern_set_filter(cairo_get_source(context.cairo), CAIRO_FILTER_BILINEAR);
  cairo_paint(context.cairo);
}

bool isDark(const UIBlurEffect& effect) {
  return effect.style == 2;
}

UIColor tint(const UIBlurEffect& effect) {
  if (isDark(effect)) return UIColor::colorWithWhite(0.11, 0.68);
  return effect.style == 0 ? UIColor::colorWithWhite(0.97, 0.82) : UIColor::colorWithWhite(1, 0.6);
}

}  // namespace

void paintVisualEffect(const UIVisualEffectView& view, const CGRect& bounds,
                       PaintContext& context) {
  const std::optional<PixelRect> rect = coveredPixels(bounds, context.cairo);
  if (!rect) return;
  const double sigma = blurSigma * context.scale;
  const double shrink = std::clamp(std::floor(sigma / 4), 1.0, 16.0);
  const SurfaceHandle picture = cutOut(*rect, shrink, context);
  if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS) return;
  blurGaussian(picture.get(), sigma / shrink);
  saturate(picture.get(), colorGain);
  // Dark text on a light veil is to be read on a dark screen, too.
  if (!isDark(view.effect())) lightenShadows(picture.get());

  const SavedState saved(context.cairo);
  roundedPath(context.cairo, bounds, view.layer().cornerRadius());
  cairo_clip(context.cairo);
  {
    const SavedState inPixels(context.cairo);
    paintEnlarged(picture.get(), *rect, shrink, context);
  }
  context.setSource(tint(view.effect()));
  cairo_paint(context.cairo);
}

}  // namespace sentrel::screen
