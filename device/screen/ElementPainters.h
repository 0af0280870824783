#pragma once

#include "device/screen/PaintContext.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {
class PKGlyphView;
class UIButton;
class UIImageView;
class UILabel;
class UITextField;
class UIVisualEffectView;
}  // namespace sentrel

namespace sentrel::screen {

/// Paints what a view of its kind shows between its background and its subviews. `bounds` has an
/// area.
void paintElement(const UIView& view, const CGRect& bounds, PaintContext& context);

/// How much of a view of its kind is seen in its state, on top of its alpha.
double elementOpacity(const UIView& view);

// One for each kind, in a file of its own.
void paintLabel(const UILabel& label, const CGRect& bounds, PaintContext& context);
void paintTextField(const UITextField& field, const CGRect& bounds, PaintContext& context);
void paintButton(const UIButton& button, const CGRect& bounds, PaintContext& context);
void paintImage(const UIImageView& view, const CGRect& bounds, PaintContext& context);
void paintGlyph(const PKGlyphView& glyph, const CGRect& bounds, PaintContext& context);
void paintVisualEffect(const UIVisualEffectView& view, const CGRect& bounds, PaintContext& context);

}  // namespace sentrel::screen
