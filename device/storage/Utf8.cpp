#include "device/storage/Utf8.h"

#include <cstdint>
#include <cstring>

#include "sentrel/platform/Utf8.h"

namespace sentrel::storage {
namespace {

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
    const Utf8Character next = firstUtf8Character(text);
    if (next.length == 0) return TextQuality::notUtf8;
    if (!isXmlCharacter(next.value)) quality = TextQuality::notForXml;
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
