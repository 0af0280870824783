#include "device/storage/Utf8.h"

#include <cstddef>

#include "sentrel/platform/Utf8.h"

namespace sentrel::storage {
namespace {

constexpr std::size_t blockSize = 64;

/// Whether the next 64 bytes are ASCII that XML may carry. Without branches, so that the compiler
/// can look at many of them at once.
bool isPlainBlock(const char* at) noexcept {
  unsigned odd = 0;
  for (std::size_t i = 0; i < blockSize; ++i) {
    const auto c = static_cast<unsigned char>(at[i]);
    const bool control = (c < 0x20) & (c != '\t') & (c != '\n') & (c != '\r');
    odd |= static_cast<unsigned>(control) | (c & 0x80u);
  }
  return odd == 0;
}

}  // namespace

TextQuality qualityOf(std::string_view text) noexcept {
  TextQuality quality = TextQuality::clean;
  while (!text.empty()) {
    if (text.size() >= blockSize && isPlainBlock(text.data())) {
      text.remove_prefix(blockSize);
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

void appendUtf8(std::string& text, char32_t character) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  const int following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  constexpr unsigned leads[] = {0, 0xC0, 0xE0, 0xF0};
  text += static_cast<char>(leads[following] | character >> (6 * following));
  for (int i = following - 1; i >= 0; --i)
    text += static_cast<char>(0x80 | (character >> (6 * i) & 0x3F));
}

}  // namespace sentrel::storage
