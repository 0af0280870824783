#pragma once

#include <string_view>

namespace sentrel {

bool isAscii(std::string_view text) noexcept;

/// The lower-case form of an ASCII letter; any other byte as it is.
constexpr char asciiLowercased(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

/// Whether `text` begins with `prefix` when its ASCII letters are read as lower case.
bool beginsWithAsciiLowercased(std::string_view text, std::string_view prefix) noexcept;

}  // namespace sentrel
