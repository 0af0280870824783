#include "device/screen/ElementPainters.h"
#include "device/screen/LayerPainter.h"
#include "sentrel/uikit/UIButton.h"

namespace sentrel::screen {

/// A pressed button is washed with the colour of text; its title is a label of its own.
void paintButton(const UIButton& button, const CGRect& bounds, PaintContext& context) {
  if (!button.isHighlighted() || !button.isEnabled()) return;
  roundedPath(context.cairo, bounds, button.layer().cornerRadius());
  context.setSource(UIColor::labelColor(), 0.12);
  cairo_fill(context.cairo);
}

}  // namespace sentrel::screen
