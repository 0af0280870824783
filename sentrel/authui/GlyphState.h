#pragma once

#include <cstdint>

namespace sentrel {

/// What the glyph of a prompt shows. The numbers are the glyph's own; which of them shows a face or
/// a finger that was not recognised changed with the system and the sensor.
enum class GlyphState : std::int64_t {
  idle = 0,
  exhausted = 1,
  /// A finger that was not recognised. On a face's glyph before system 12: at rest.
  notRecognized = 2,
  scanning = 3,
  /// Something was noticed and did not match: from system 14 on, and before it.
  detection14 = 4,
  detection = 5,
  recognizedBefore11 = 6,
  retry = 7,
  notRecognizedAgain = 10,
  recognized = 12,
  /// No tries are left: before system 13.5, and from it on.
  exhaustedBefore135 = 13,
  exhausted135 = 28,
};

}  // namespace sentrel
