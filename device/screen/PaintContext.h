#pragma once

#include <vector>

#include "device/screen/GlyphLook.h"
#include "device/screen/Handles.h"
#include "device/screen/PinnedFonts.h"
#include "sentrel/platform/Geometry.h"
#include "sentrel/platform/Screen.h"
#include "sentrel/platform/Seconds.h"
#include "sentrel/uikit/UIColor.h"

namespace sentrel::screen {

/// What the painters of one picture share.
struct PaintContext {
  cairo_t* cairo;
  const PinnedFonts& fonts;
  UIUserInterfaceStyle style;
  GlyphKind glyphKind;
  /// Running animations are shown as they stand then.
  SteadyTime moment;
  /// Pixels a point of the picture.
  double scale;
  /// The surfaces under the one that is painted on now: one for each open group, bottom first.
  std::vector<cairo_surface_t*> surfacesBelow = {};

  void setSource(const UIColor& color, double opacity = 1) const {
    const UIColor::Components c = color.resolved(style);
    cairo_set_source_rgba(cairo, c.red, c.green, c.blue, c.alpha * opacity);
  }
};

/// What is painted until the end of the scope shows with `opacity` as a whole. An opacity of 1 or
/// more costs nothing.
class Group {
 public:
  Group(PaintContext& context, double opacity);
  ~Group();
  Group(const Group&) = delete;
  Group& operator=(const Group&) = delete;

 private:
  PaintContext& context_;
  double opacity_;
};

}  // namespace sentrel::screen
