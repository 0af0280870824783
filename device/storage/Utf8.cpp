#include "device/storage/Utf8.h"

#include <cstddef>

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
