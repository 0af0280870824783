#include "device/screen/ElementPainters.h"

#include "sentrel/uikit/PKGlyphView.h"
#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel::screen {

void paintElement(const UIView& view, const CGRect& bounds, PaintContext& context) {
  if (const auto* label = dynamic_cast<const UILabel*>(&view))
    paintLabel(*label, bounds, context);
  else if (const auto* field = dynamic_cast<const UITextField*>(&view))
    paintTextField(*field, bounds, context);
  else if (const auto* button = dynamic_cast<const UIButton*>(&view))
    paintButton(*button, bounds, context);
  else if (const auto* image = dynamic_cast<const UIImageView*>(&view))
    paintImage(*image, bounds, context);
  else if (const auto* effect = dynamic_cast<const UIVisualEffectView*>(&view))
    paintVisualEffect(*effect, bounds, context);
  else if (const auto* glyph = dynamic_cast<const PKGlyphView*>(&view))
    paintGlyph(*glyph, bounds, context);
}

double elementOpacity(const UIView& view) {
  const auto* button = dynamic_cast<const UIButton*>(&view);
  return button && !button->isEnabled() ? 0.35 : 1;
}

}  // namespace sentrel::screen
