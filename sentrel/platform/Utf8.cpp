#include "sentrel/platform/Utf8.h"

namespace sentrel {

Utf8Character firstUtf8Character(std::string_view text) noexcept {
  const auto first = static_cast<unsigned char>(text.front());
  if (first < 0x80) return {first, 1};
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() < length) return {};
  char32_t character = first & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return {};
    character = (character << 6) | (next & 0x3Fu);
  }
  constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < smallest[length] || character > 0x10FFFF || surrogate) return {};
  return {character, length};
}

bool isUtf8(std::string_view text) noexcept {
  while (!text.empty()) {
    const std::size_t length = firstUtf8Character(text).length;
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace sentrel
