#include <algorithm>

#include "device/screen/ElementPainters.h"
#include "device/screen/GlyphDrawing.h"
#include "sentrel/uikit/PKGlyphView.h"

namespace sentrel::screen {
namespace {

/// The glyph's square in the middle of `bounds`.
void enterSquare(const CGRect& bounds, cairo_t* cairo) {
  const double side = std::min(bounds.size.width, bounds.size.height);
  cairo_translate(cairo, bounds.midX() - side / 2, bounds.midY() - side / 2);
  cairo_scale(cairo, side / glyphSide, side / glyphSide);
}

}  // namespace

void paintGlyph(const PKGlyphView& glyph, const CGRect& bounds, PaintContext& context) {
  const UIColor color = glyph.primaryColor().value_or(UIColor::systemBlueColor());
  const GlyphTransition now = glyphTransition(glyph, context.glyphKind, context.moment);
  const SavedState saved(context.cairo);
  enterSquare(bounds, context.cairo);
  if (now.from != now.to && now.progress < 1) {
    const Group leaving(context, 1 - now.progress);
    drawGlyph(now.from, context.glyphKind, color, 1, context);
  }
  const bool fadesIn = now.from != now.to;
  const Group coming(context, fadesIn ? now.progress : 1);
  drawGlyph(now.to, context.glyphKind, color, fadesIn ? now.progress : 1, context);
}

}  // namespace sentrel::screen
