#pragma once

#include "device/screen/GlyphLook.h"
#include "device/screen/PaintContext.h"

namespace sentrel::screen {

/// Draws one look of the glyph in a square of `glyphSide` points, from the origin. `drawn` is how
/// much of what the look adds (a tick, a cross, a lit finger) is there, from 0 to 1.
void drawGlyph(GlyphLook look, GlyphKind kind, const UIColor& color, double drawn,
               PaintContext& context);

inline constexpr double glyphSide = 64;

}  // namespace sentrel::screen
