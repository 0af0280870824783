#include "device/screen/TextLayout.h"

#include <glib.h>

#include <algorithm>
#include <cmath>

namespace sentrel::screen {
namespace {

using TextHandle = std::unique_ptr<char, Releasing<g_free>>;

/// Pango counts in 32 bits.
constexpr double longestLength = 1e6;

int units(double points) {
  return static_cast<int>(std::ceil(std::clamp(points, 0.0, longestLength) * PANGO_SCALE));
}

void limit(PangoLayout* layout, const TextLayout::Limits& limits) {
  if (std::isfinite(limits.width)) pango_layout_set_width(layout, units(limits.width));
  if (limits.ellipsis) pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
  if (limits.ellipsis && std::isfinite(limits.height))
    pango_layout_set_height(layout, units(limits.height));
  pango_layout_set_wrap(layout, limits.breaksWords ? PANGO_WRAP_WORD_CHAR : PANGO_WRAP_WORD);
}

/// Pango swaps left and right where a text begins in a script that runs from right to left; a view
/// means the sides that it says.
PangoAlignment sides(PangoLayout* layout, PangoAlignment wanted) {
  const bool swapped = pango_layout_get_direction(layout, 0) == PANGO_DIRECTION_RTL;
  if (!swapped || wanted == PANGO_ALIGN_CENTER) return wanted;
  return wanted == PANGO_ALIGN_LEFT ? PANGO_ALIGN_RIGHT : PANGO_ALIGN_LEFT;
}

}  // namespace

std::string drawableText(std::string_view text) {
  const std::string_view shown = text.substr(0, longestDrawnText);
  const TextHandle valid(g_utf8_make_valid(shown.data(), static_cast<gssize>(shown.size())));
  return valid.get();
}

TextLayout::TextLayout(const PinnedFonts& fonts, std::string_view text, const Font& font,
                       const Limits& limits)
    : limits_(limits), layout_(pango_layout_new(fonts.context())) {
  const std::string drawn = drawableText(text);
  pango_layout_set_font_description(layout_.get(), PinnedFonts::describe(font).get());
  pango_layout_set_text(layout_.get(), drawn.data(), static_cast<int>(drawn.size()));
  limit(layout_.get(), limits_);
  pango_layout_set_alignment(layout_.get(), sides(layout_.get(), limits_.alignment));
}

CGSize TextLayout::size() const {
  PangoRectangle logical;
  pango_layout_get_extents(layout_.get(), nullptr, &logical);
  return {static_cast<double>(logical.width) / PANGO_SCALE,
          static_cast<double>(logical.height) / PANGO_SCALE};
}

double lineHeight(const PinnedFonts& fonts, const Font& font) {
  return TextLayout(fonts, "", font, {}).size().height;
}

}  // namespace sentrel::screen
