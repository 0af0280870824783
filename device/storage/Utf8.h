#pragma once

#include <string>
#include <string_view>

namespace sentrel::storage {

enum class TextQuality {
  clean,
  /// UTF-8, but with a character that XML cannot carry (a control character, mostly).
  notForXml,
  notUtf8,
};

/// Judges a whole text.
TextQuality qualityOf(std::string_view text) noexcept;

/// Whether XML 1.0 may carry `character`, as itself or escaped.
bool isXmlCharacter(char32_t character) noexcept;

/// Adds a character, which is none of a surrogate pair.
void appendUtf8(std::string& text, char32_t character);

}  // namespace sentrel::storage
