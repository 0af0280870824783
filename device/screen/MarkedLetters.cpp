#include "device/screen/MarkedLetters.h"

#include <glib.h>

#include <algorithm>

#include "device/screen/PinnedFonts.h"

namespace sentrel::screen {
namespace {

using TextHandle = std::unique_ptr<char, Releasing<g_free>>;

/// The first byte of U+0300, before which there are no marks.
constexpr unsigned char firstByteOfMarks = 0xCC;

bool mayHaveMarks(std::string_view text) {
  return std::ranges::any_of(
      text, [](char byte) { return static_cast<unsigned char>(byte) >= firstByteOfMarks; });
}

/// Whether a letter and its marks are one character for a font.
bool isComposed(std::string_view letter) {
  const TextHandle composed(g_utf8_normalize(letter.data(), static_cast<gssize>(letter.size()),
                                             G_NORMALIZE_DEFAULT_COMPOSE));
  return composed && g_utf8_strlen(composed.get(), -1) == 1;
}

const char* endOfMarks(const char* at, const char* end) {
  while (at < end && g_unichar_ismark(g_utf8_get_char(at)))
    at = g_utf8_next_char(at);
  return at;
}

}  // namespace

AttributesHandle attributesForMarks(std::string_view text) {
  if (!mayHaveMarks(text)) return nullptr;
  AttributesHandle attributes(pango_attr_list_new());
  const char* const end = text.data() + text.size();
  for (const char* letter = text.data(); letter < end;) {
    const char* const marks = g_utf8_next_char(letter);
    const char* const next = endOfMarks(marks, end);
    if (next > marks && !isComposed({letter, next})) {
      PangoAttribute* family = pango_attr_family_new(PinnedFonts::otherScriptsFamily);
      family->start_index = static_cast<guint>(letter - text.data());
      family->end_index = static_cast<guint>(next - text.data());
      pango_attr_list_insert(attributes.get(), family);
    }
    letter = next;
  }
  return attributes;
}

}  // namespace sentrel::screen
