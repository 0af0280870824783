#include <algorithm>
#include <cmath>
#include <string>

#include "device/screen/ElementPainters.h"
#include "device/screen/TextPainter.h"
#include "sentrel/uikit/UILabel.h"

namespace sentrel::screen {
namespace {

/// No text is shrunk to less, in points, where the label names no limit of its own.
constexpr double smallestSize = 4;

bool truncates(const UILabel& label) {
  return label.lineBreakMode() == NSLineBreakMode::byTruncatingTail;
}

/// No text that has to be cut all the same is shrunk to less, in points.
constexpr double smallestReadableSize = 10;

/// A label of one line has no use for line ends. Spaces behind a centred text widen its label, and
/// do not move the text. Where the text has more lines of its own than the label, no size would
/// make it fit: it ends where they end.
std::string shownText(const UILabel& label, const PinnedFonts& fonts) {
  std::string text = label.text();
  if (label.textAlignment() == NSTextAlignment::center) text.erase(text.find_last_not_of(' ') + 1);
  const int lines = label.numberOfLines();
  if (lines == 1) std::replace(text.begin(), text.end(), '\n', ' ');
  if (lines < 2 || text.empty()) return text;
  const TextLayout own(fonts, text, label.font(), {});
  if (own.lineCount() <= lines) return text;
  return std::string(own.textOfLines(lines)) + (truncates(label) ? ellipsis : "");
}

/// Whether all of the text shows in this font, without breaking a word.
bool fits(const UILabel& label, const std::string& text, const Font& font, CGSize room,
          const PinnedFonts& fonts) {
  const TextLayout layout(fonts, text, font, {.width = room.width, .breaksWords = false});
  if (layout.size().width > room.width) return false;
  if (label.numberOfLines() > 0 && layout.lineCount() > label.numberOfLines()) return false;
  return layout.lineCount() == 1 || layout.size().height <= room.height;
}

/// The largest size, down to the label's limit, at which the text fits. One that fits at none stays
/// readable.
Font fittingFont(const UILabel& label, const std::string& text, CGSize room,
                 const PinnedFonts& fonts) {
  Font font = label.font();
  if (!label.adjustsFontSizeToFitWidth() || fits(label, text, font, room, fonts)) return font;
  double tooLarge = font.size;
  const double factor = std::clamp(label.minimumScaleFactor(), 0.0, 1.0);
  font.size = factor > 0 ? font.size * factor : std::min(font.size, smallestSize);
  if (!fits(label, text, font, room, fonts)) {
    font.size = std::max(font.size, std::min(tooLarge, smallestReadableSize));
    return font;
  }
  while (tooLarge - font.size > 0.125) {
    Font tried = font;
    tried.size = (font.size + tooLarge) / 2;
    if (fits(label, text, tried, room, fonts))
      font = tried;
    else
      tooLarge = tried.size;
  }
  return font;
}

/// The height of the lines that may show.
double heightOfLines(const UILabel& label, const Font& font, double room,
                     const PinnedFonts& fonts) {
  const double line = lineHeight(fonts, font);
  double lines = std::max(1.0, std::floor(room / line + 0.05));
  if (label.numberOfLines() > 0) lines = std::min(lines, double(label.numberOfLines()));
  return (lines + 0.05) * line;
}

PangoAlignment alignmentOf(NSTextAlignment alignment) {
  switch (alignment) {
    case NSTextAlignment::center:
      return PANGO_ALIGN_CENTER;
    case NSTextAlignment::right:
      return PANGO_ALIGN_RIGHT;
    case NSTextAlignment::left:
      break;
  }
  return PANGO_ALIGN_LEFT;
}

}  // namespace

void paintLabel(const UILabel& label, const CGRect& bounds, PaintContext& context) {
  // A label is often exactly as wide as its text; rounding must not cost it a word.
  const CGSize room{bounds.size.width + 0.05, bounds.size.height + 0.05};
  const std::string text = shownText(label, context.fonts);
  if (text.empty()) return;
  const Font font = fittingFont(label, text, room, context.fonts);
  const TextLayout layout(context.fonts, text, font,
                          {.width = room.width,
                           .height = heightOfLines(label, font, room.height, context.fonts),
                           .ellipsis = truncates(label),
                           .alignment = alignmentOf(label.textAlignment())});
  paintText(layout, bounds, label.textColor(), context);
}

}  // namespace sentrel::screen
