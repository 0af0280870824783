#pragma once

#include <cstddef>
#include <string_view>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// One character of a text and how many bytes it takes; a length of 0 is no character.
struct Utf8Character {
  char32_t value = 0;
  std::size_t length = 0;
};

/// The first character of `text`, which is not empty. None where its bytes are not UTF-8: broken
/// off, longer than need be, a surrogate or beyond the last character.
SENTREL_API Utf8Character firstUtf8Character(std::string_view text) noexcept;

/// Whether the whole of `text` is UTF-8.
SENTREL_API bool isUtf8(std::string_view text) noexcept;

}  // namespace sentrel
