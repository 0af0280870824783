#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// A range of text, in UTF-16 code units.
struct NSRange {
  std::size_t location = 0;
  std::size_t length = 0;

  friend bool operator==(const NSRange&, const NSRange&) = default;
};

/// The length of `text` in UTF-16 code units. A byte that is part of no UTF-8 sequence counts as
/// one.
SENTREL_API std::size_t utf16Length(std::string_view text) noexcept;

/// How many characters `text` has, each of one or two code units.
SENTREL_API std::size_t characterCount(std::string_view text) noexcept;

/// `range` cut to what lies inside `text`, and widened to whole characters where it cuts one that
/// takes two code units.
SENTREL_API NSRange rangeInsideText(std::string_view text, NSRange range) noexcept;

/// `text` with `rangeInsideText` of `range` replaced.
SENTREL_API std::string stringByReplacingCharactersInRange(std::string_view text, NSRange range,
                                                           std::string_view replacement);

}  // namespace sentrel
