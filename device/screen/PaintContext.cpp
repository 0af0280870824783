#include "device/screen/PaintContext.h"

namespace sentrel::screen {

Group::Group(PaintContext& context, double opacity) : context_(context), opacity_(opacity) {
  if (opacity_ >= 1) return;
  context_.surfacesBelow.push_back(cairo_get_group_target(context_.cairo));
  cairo_push_group(context_.cairo);
}

Group::~Group() {
  if (opacity_ >= 1) return;
  cairo_pop_group_to_source(context_.cairo);
  cairo_paint_with_alpha(context_.cairo, opacity_);
  context_.surfacesBelow.pop_back();
}

}  // namespace sentrel::screen
