#pragma once

#include <cstdint>
#include <span>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// The widest blur that there is: with the next radius the division table of the algorithm, 256
/// entries for each unit of weight, could no longer be counted in 32 bits.
inline constexpr std::int64_t largestStackBlurRadius = 4094;

/// How many threads share a blur. The result is the same, byte for byte.
enum class StackBlurThreads { one, two };

/// Blurs a picture in place: each of the bytes 0, 1 and 2 of a pixel becomes the mean of those
/// around it, rounded down, first along its row and then, of what came out, along its column. The
/// weights are 1, 2, …, `withRadius` + 1, …, 2, 1; beyond the edges the outermost pixel goes on. In
/// which order the bytes hold the colours does not matter. Byte 3 stays.
///
/// `buffer` holds `width` × `height` pixels of four bytes, the rows packed without padding. Nothing
/// happens where it is null or, as a span, too short, where a side is 0, for a radius of 0 or less,
/// and for one beyond `largestStackBlurRadius`.
///
/// The time does not depend on the radius but for its class: up to 15, up to 126, and beyond, which
/// is several times as slow. Besides the buffer it takes 2 × `withRadius` + 26 rows of memory at
/// most, and a few rows more; where that is not to be had it throws std::bad_alloc, and no byte has
/// been changed. Any thread; two blurs of different buffers do not meet.
///
/// The algorithm is Mario Klingemann's stack blur in exact integers. Why the quick form gives the
/// same bytes stands in stackblur/Kernel.h.
SENTREL_API void sn__applyStackBlurToBuffer(std::uint8_t* buffer, std::uint32_t width,
                                            std::uint32_t height, std::int64_t withRadius,
                                            StackBlurThreads threads = StackBlurThreads::one);
SENTREL_API void sn__applyStackBlurToBuffer(std::span<std::uint8_t> buffer, std::uint32_t width,
                                            std::uint32_t height, std::int64_t withRadius,
                                            StackBlurThreads threads = StackBlurThreads::one);

}  // namespace sentrel
