#include <algorithm>

#include "device/screen/ElementPainters.h"
#include "device/screen/LayerPainter.h"
#include "device/screen/TextPainter.h"
#include "sentrel/uikit/UITextField.h"

namespace sentrel::screen {
namespace {

constexpr double caretWidth = 2;

void paintBox(const CGRect& bounds, PaintContext& context) {
  const CGRect inside = CGRectMake(bounds.origin.x + 0.25, bounds.origin.y + 0.25,
                                   bounds.size.width - 0.5, bounds.size.height - 0.5);
  roundedPath(context.cairo, inside, 5);
  context.setSource(UIColor::secondaryLabelColor(), 0.5);
  cairo_set_line_width(context.cairo, 0.5);
  cairo_stroke(context.cairo);
}

double leftOf(double textWidth, NSTextAlignment alignment, const CGRect& room) {
  const double spare = room.size.width - textWidth;
  if (alignment == NSTextAlignment::center) return room.origin.x + spare / 2;
  // The end of what is too long is where the caret is.
  return alignment == NSTextAlignment::right || spare < 0 ? room.origin.x + spare : room.origin.x;
}

/// The text before the caret, as it is shown.
std::string textBeforeCaret(const UITextField& field) {
  const std::string shown = field.displayedText();
  const std::size_t length = utf16Length(shown);
  const std::size_t caret = std::min(field.selectedRange().location, length);
  return stringByReplacingCharactersInRange(shown, {caret, length - caret}, "");
}

void paintCaret(const UITextField& field, double left, const CGRect& bounds, double lineHeight,
                PaintContext& context) {
  const UIColor color = field.tintColor().value_or(UIColor::systemBlueColor());
  if (color.resolved(context.style).alpha <= 0 || !field.isFirstResponder()) return;
  const TextLayout before(context.fonts, textBeforeCaret(field), field.font(), {});
  roundedPath(context.cairo,
              CGRectMake(left + before.size().width, bounds.midY() - lineHeight / 2, caretWidth,
                         lineHeight),
              caretWidth / 2);
  context.setSource(color);
  cairo_fill(context.cairo);
}

CGRect textRoom(const UITextField& field, const CGRect& bounds) {
  const double inset = field.borderStyle() == UITextBorderStyle::roundedRect ? 7 : 0;
  return CGRectMake(bounds.origin.x + inset, bounds.origin.y, bounds.size.width - 2 * inset,
                    bounds.size.height);
}

}  // namespace

void paintTextField(const UITextField& field, const CGRect& bounds, PaintContext& context) {
  if (field.borderStyle() == UITextBorderStyle::roundedRect) paintBox(bounds, context);
  const CGRect room = textRoom(field, bounds);
  const TextLayout layout(context.fonts, field.displayedText(), field.font(), {});
  const CGSize size = layout.size();
  const double left = leftOf(size.width, field.textAlignment(), room);
  const SavedState saved(context.cairo);
  // Centred text may be a little wider than its field without being cut.
  if (field.textAlignment() != NSTextAlignment::center) {
    cairo_rectangle(context.cairo, room.origin.x, room.origin.y, room.size.width + caretWidth,
                    room.size.height);
    cairo_clip(context.cairo);
  }
  paintText(layout, CGRectMake(left, room.origin.y, size.width, room.size.height),
            field.textColor(), context);
  paintCaret(field, left, room, size.height, context);
}

}  // namespace sentrel::screen
