#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "sentrel/platform/Export.h"

namespace sentrel::stackblur {

/// Rows of a picture that are blurred together, in place. Pixels of four bytes, rows packed.
struct Band {
  std::uint8_t* rows;
  std::size_t width;   ///< pixels, at least one
  std::size_t height;  ///< rows, at least one

  /// Copies of the picture's rows that adjoin the band, from the top: as many as there are, but no
  /// more than the radius + 2. They stay until the band is blurred.
  std::span<const std::uint8_t> above = {};
  std::span<const std::uint8_t> below = {};
};

/// A blur that has all the memory that it needs.
class SENTREL_API PreparedBlur {
 public:
  virtual ~PreparedBlur();

  /// Once.
  virtual void run() noexcept = 0;
};

/// The blur for one kind of processor.
struct Form {
  const char* name;

  /// The radius is at least 1, and `largestStackBlurRadius` at most. The blur is the caller's.
  /// Throws std::bad_alloc.
  PreparedBlur* (*prepare)(const Band& band, std::size_t radius);
};

/// The forms that this processor can run, the quickest first. There is always one.
SENTREL_API std::span<const Form> forms();

// The forms themselves: one source, Kernel.h, under different instruction sets. Two of them are
// there on x86-64 alone.
PreparedBlur* prepareAvx2(const Band& band, std::size_t radius);
PreparedBlur* prepareSse2(const Band& band, std::size_t radius);
PreparedBlur* preparePortable(const Band& band, std::size_t radius);

}  // namespace sentrel::stackblur
