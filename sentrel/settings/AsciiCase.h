#pragma once

#include <algorithm>
#include <string_view>

namespace sentrel {

inline bool isAscii(std::string_view text) noexcept {
  return std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// The lower-case form of an ASCII letter; any other byte as it is.
constexpr char asciiLowercased(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

}  // namespace sentrel
