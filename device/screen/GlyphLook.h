#pragma once

#include <cstdint>

#include "sentrel/platform/Seconds.h"

namespace sentrel {
class PKGlyphView;
}

namespace sentrel::screen {

/// What the device recognises its user by, and so what its glyph shows.
enum class GlyphKind { fingerprint, face };

enum class GlyphLook { idle, scanning, success, failure };

/// What a glyph in `state` tells the user. Numbers without a meaning look idle. Two of them mean
/// different things by kind: where a face is looked for, 2 waits for one and 4 and 5 go on looking;
/// a finger that comes with them was not recognised.
GlyphLook glyphLook(std::int64_t state, GlyphKind kind) noexcept;

/// A glyph on its way from one look to the next.
struct GlyphTransition {
  GlyphLook from;
  GlyphLook to;
  /// 0 to 1.
  double progress;
};

GlyphTransition glyphTransition(const PKGlyphView& glyph, GlyphKind kind, SteadyTime moment);

}  // namespace sentrel::screen
