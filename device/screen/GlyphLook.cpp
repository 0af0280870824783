#include "device/screen/GlyphLook.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "sentrel/uikit/PKGlyphView.h"

namespace sentrel::screen {
namespace {

/// The number at one end of the record of a change of state.
GlyphLook lookOf(const CAAnimation::Value& state, GlyphKind kind) {
  const double* number = std::get_if<double>(&state);
  return glyphLook(number ? std::llround(*number) : 0, kind);
}

}  // namespace

GlyphLook glyphLook(std::int64_t state, GlyphKind kind) noexcept {
  const bool isFace = kind == GlyphKind::face;
  switch (state) {
    case 2:
      return isFace ? GlyphLook::idle : GlyphLook::failure;
    case 4:
    case 5:
      return isFace ? GlyphLook::scanning : GlyphLook::failure;
    case 3:
      return GlyphLook::scanning;
    case 6:
    case 12:
      return GlyphLook::success;
    case 1:
    case 7:
    case 10:
      return GlyphLook::failure;
    default:
      return GlyphLook::idle;
  }
}

GlyphTransition glyphTransition(const PKGlyphView& glyph, GlyphKind kind, SteadyTime moment) {
  for (const CAAnimation& animation : glyph.layer().animations())
    if (animation.keyPath == glyphStateKeyPath && !animation.values.empty())
      return {lookOf(animation.values.front(), kind), lookOf(animation.values.back(), kind),
              std::clamp(animation.progress(moment), 0.0, 1.0)};
  const GlyphLook look = glyphLook(glyph.state(), kind);
  return {look, look, 1};
}

}  // namespace sentrel::screen
