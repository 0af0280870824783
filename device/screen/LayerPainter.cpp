#include "device/screen/LayerPainter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sentrel::screen {

void roundedPath(cairo_t* cairo, const CGRect& rect, double radius) {
  constexpr double quarter = std::numbers::pi / 2;
  const double r = std::min({radius, rect.size.width / 2, rect.size.height / 2});
  cairo_new_path(cairo);
  if (!(r > 0)) {
    cairo_rectangle(cairo, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    return;
  }
  cairo_arc(cairo, rect.maxX() - r, rect.origin.y + r, r, -quarter, 0);
  cairo_arc(cairo, rect.maxX() - r, rect.maxY() - r, r, 0, quarter);
  cairo_arc(cairo, rect.origin.x + r, rect.maxY() - r, r, quarter, 2 * quarter);
  cairo_arc(cairo, rect.origin.x + r, rect.origin.y + r, r, 2 * quarter, 3 * quarter);
  cairo_close_path(cairo);
}

void paintBackground(const UIView& view, const Presentation& shown, PaintContext& context) {
  if (!shown.backgroundColor || shown.backgroundColor->resolved(context.style).alpha <= 0) return;
  roundedPath(context.cairo, shown.bounds, view.layer().cornerRadius());
  context.setSource(*shown.backgroundColor);
  cairo_fill(context.cairo);
}

void paintBorder(const CALayer& layer, const CGRect& bounds, PaintContext& context) {
  const double width = std::min({layer.borderWidth(), bounds.size.width, bounds.size.height});
  if (!(width > 0)) return;
  const CGRect middle = CGRectMake(bounds.origin.x + width / 2, bounds.origin.y + width / 2,
                                   bounds.size.width - width, bounds.size.height - width);
  roundedPath(context.cairo, middle, layer.cornerRadius() - width / 2);
  context.setSource(layer.borderColor().value_or(UIColor::blackColor()));
  cairo_set_line_width(context.cairo, width);
  cairo_set_line_join(context.cairo, CAIRO_LINE_JOIN_MITER);
  cairo_stroke(context.cairo);
}

void clipToLayer(const CALayer& layer, const CGRect& bounds, PaintContext& context) {
  const bool empty = !(bounds.size.width > 0 && bounds.size.height > 0);
  roundedPath(context.cairo, empty ? CGRect{} : bounds, layer.cornerRadius());
  cairo_clip(context.cairo);
}

}  // namespace sentrel::screen
