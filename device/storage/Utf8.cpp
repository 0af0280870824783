#include "device/storage/Utf8.h"

#include <cstdint>
#include <cstring>

namespace sentrel::storage {
namespace {

struct Decoded {
  char32_t character = 0;
  std::size_t length = 0;
};

/// The first character of `text`, which is not empty; its length is 0 when it is not UTF-8.
Decoded decodeFirst(std::string_view text) noexcept {
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

/// Whether the next eight bytes lie from 0x20 to 0x7F. May answer false when they do.
bool isPlainWord(const char* at) noexcept {
  constexpr std::uint64_t highBits = 0x8080808080808080u;
  constexpr std::uint64_t spaces = 0x2020202020202020u;
  std::uint64_t word;
  std::memcpy(&word, at, sizeof word);
  return ((word | (word - spaces)) & highBits) == 0;
}

}  // namespace

TextQuality qualityOf(std::string_view text) noexcept {
  TextQuality quality = TextQuality::clean;
  while (!text.empty()) {
    if (text.size() >= 8 && isPlainWord(text.data())) {
      text.remove_prefix(8);
      continue;
    }
    const Decoded next = decodeFirst(text);
    if (next.length == 0) return TextQuality::notUtf8;
    if (!isXmlCharacter(next.character)) quality = TextQuality::notForXml;
    text.remove_prefix(next.length);
  }
  return quality;
}

bool isXmlCharacter(char32_t character) noexcept {
  if (character < 0x20) return character == '\t' || character == '\n' || character == '\r';
  return character < 0xD800 || (character >= 0xE000 && character < 0xFFFE) ||
         (character >= 0x10000 && character <= 0x10FFFF);
}

}  // namespace sentrel::storage
