#include "device/screen/TextLayout.h"

#include <glib.h>

#include <algorithm>
#include <cmath>

#include "device/screen/MarkedLetters.h"

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
  // To be asked for the direction, Pango breaks the lines.
  if (wanted == PANGO_ALIGN_CENTER) return wanted;
  if (pango_layout_get_direction(layout, 0) != PANGO_DIRECTION_RTL) return wanted;
  return wanted == PANGO_ALIGN_LEFT ? PANGO_ALIGN_RIGHT : PANGO_ALIGN_LEFT;
}

/// In characters.
constexpr std::size_t longestWord = 128;
constexpr std::string_view zeroWidthSpace = "\u200B";

std::string_view firstCharacter(std::string_view text) {
  return text.substr(0, static_cast<std::size_t>(g_utf8_next_char(text.data()) - text.data()));
}

bool isSpace(std::string_view character) {
  return g_unichar_isspace(g_utf8_get_char(character.data()));
}

/// Breaking a word anywhere takes Pango a time that grows with the square of its length, unless
/// there is a place to break between any two characters.
void appendBreakable(std::string& text, std::string_view word) {
  const auto length = static_cast<gssize>(word.size());
  const bool isTooLong = static_cast<std::size_t>(g_utf8_strlen(word.data(), length)) > longestWord;
  for (bool isFirst = true; !word.empty(); isFirst = false) {
    const std::string_view character = firstCharacter(word);
    const gunichar code = g_utf8_get_char(character.data());
    if (isTooLong && !isFirst && !g_unichar_ismark(code)) text += zeroWidthSpace;
    text += character;
    word.remove_prefix(character.size());
  }
}

/// `text` is UTF-8.
std::string withBreakableWords(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    std::size_t end = 0;
    while (end < text.size() && !isSpace(text.substr(end)))
      end += firstCharacter(text.substr(end)).size();
    appendBreakable(result, text.substr(0, end));
    text.remove_prefix(end);
    if (text.empty()) break;
    const std::string_view space = firstCharacter(text);
    result += space;
    text.remove_prefix(space.size());
  }
  return result;
}

}  // namespace

std::string drawableText(std::string_view text) {
  const std::string_view shown = text.substr(0, longestDrawnText);
  const TextHandle valid(g_utf8_make_valid(shown.data(), static_cast<gssize>(shown.size())));
  return withBreakableWords(valid.get());
}

TextLayout::TextLayout(const PinnedFonts& fonts, std::string_view text, const Font& font,
                       const Limits& limits)
    : limits_(limits), layout_(pango_layout_new(fonts.context())) {
  pango_layout_set_font_description(layout_.get(), PinnedFonts::describe(font).get());
  setText(drawableText(text));
  limit(layout_.get(), limits_);
  pango_layout_set_alignment(layout_.get(), sides(layout_.get(), limits_.alignment));
  if (limits_.ellipsis) endInEllipsis();
}

void TextLayout::setText(const std::string& text) {
  pango_layout_set_text(layout_.get(), text.data(), static_cast<int>(text.size()));
  pango_layout_set_attributes(layout_.get(), attributesForMarks(text).get());
}

/// Pango marks what it cuts of a paragraph, but drops whole paragraphs without a sign.
void TextLayout::endInEllipsis() {
  const std::string_view shown = textOfLines(lineCount());
  const std::string_view all = pango_layout_get_text(layout_.get());
  if (shown.size() < all.size() && !pango_layout_is_ellipsized(layout_.get()))
    setText(std::string(shown) + ellipsis);
}

std::string_view TextLayout::textOfLines(int count) const {
  const PangoLayoutLine* last = pango_layout_get_line_readonly(layout_.get(), count - 1);
  return {pango_layout_get_text(layout_.get()),
          static_cast<std::size_t>(last->start_index + last->length)};
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
