#pragma once

#include "device/screen/PaintContext.h"
#include "device/screen/TextLayout.h"

namespace sentrel::screen {

/// Paints the laid out lines in the middle of the height of `bounds`, from its left edge. Lines
/// beyond the layout's height limit do not show.
void paintText(const TextLayout& layout, const CGRect& bounds, const UIColor& color,
               PaintContext& context);

}  // namespace sentrel::screen
