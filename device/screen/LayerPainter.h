#pragma once

#include "device/screen/PaintContext.h"
#include "device/screen/Presentation.h"
#include "sentrel/uikit/CALayer.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel::screen {

/// The outline of `rect` with corners of `radius`, which is at most half of either side, as the
/// current path.
void roundedPath(cairo_t* cairo, const CGRect& rect, double radius);

void paintBackground(const UIView& view, const Presentation& shown, PaintContext& context);

/// Inside the bounds, over everything else that the view shows.
void paintBorder(const CALayer& layer, const CGRect& bounds, PaintContext& context);

/// Whatever comes is seen inside the bounds alone; nowhere if they have no area.
void clipToLayer(const CALayer& layer, const CGRect& bounds, PaintContext& context);

}  // namespace sentrel::screen
