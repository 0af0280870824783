#pragma once

#include <cstddef>
#include <string_view>

#include "sentrel/platform/Seconds.h"

/// What the reader and the writer of the binary form of a property list both know: a head, the
/// objects, where each of them stands, and a trailer with the sizes of all that. In each number the
/// high byte comes first.
namespace sentrel::storage::binary_format {

inline constexpr std::string_view head = "bplist00";
inline constexpr std::size_t trailerSize = 32;

/// The high half of an object's first byte; the low half is its size, or says where that stands.
enum Marker : unsigned {
  simple = 0x0,
  integer = 0x1,
  real = 0x2,
  date = 0x3,
  data = 0x4,
  ascii = 0x5,
  utf16 = 0x6,
  identifier = 0x8,
  array = 0xA,
  dictionary = 0xD,
};

/// Dates are seconds from the start of 2001.
inline constexpr Seconds startOf2001{978307200};

/// XML has no identifiers, which archives refer to their objects by: there they are dictionaries of
/// this one key, and so they are in a PropertyList.
inline constexpr std::string_view identifierKey = "CF$UID";

}  // namespace sentrel::storage::binary_format
