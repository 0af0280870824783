#include "device/screen/TextPainter.h"

#include <pango/pangocairo.h>

#include <algorithm>

namespace sentrel::screen {

void paintText(const TextLayout& layout, const CGRect& bounds, const UIColor& color,
               PaintContext& context) {
  const SavedState saved(context.cairo);
  const double height = std::min(layout.size().height, layout.limits().height);
  const double top = bounds.midY() - height / 2;
  if (layout.size().height > height) {
    cairo_rectangle(context.cairo, bounds.origin.x, top, bounds.size.width, height);
    cairo_clip(context.cairo);
  }
  cairo_move_to(context.cairo, bounds.origin.x, top);
  context.setSource(color);
  pango_cairo_show_layout(context.cairo, layout.pango());
}

}  // namespace sentrel::screen
