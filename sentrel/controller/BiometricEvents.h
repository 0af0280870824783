#pragma once

#include <cstdint>

#include "sentrel/authui/GlyphState.h"
#include "sentrel/platform/BiometricObserver.h"

namespace sentrel {

class Bridge;

// What the biometric service's numbers mean on a device, and what the glyph shows for them. The
// numbers are the service's own and differ between its systems and sensors.

inline constexpr BiometricEvent noEvent = 0;
inline constexpr BiometricEvent fingerLiftedEvent = 0;
inline constexpr BiometricEvent matchEvent = 3;
inline constexpr BiometricEvent attemptsExhaustedEvent = 6;

/// No attempt is left before the device's own passcode is asked for.
BiometricEvent endOfAttemptsEvent(Bridge& bridge);

/// A finger or a face was noticed, and did not match.
bool isFailedTry(Bridge& bridge, BiometricEvent event);

/// Whether the event ends a try: named so, or at or above what the sensor otherwise reports.
bool isResult(Bridge& bridge, BiometricEvent event);

/// What the glyph shows at first for a failed try.
GlyphState failedTryGlyphState(Bridge& bridge, BiometricEvent event);

/// What the glyph shows for a result.
struct ResultGlyphStates {
  /// From the event alone.
  GlyphState first;
  /// In the end.
  GlyphState last;
};
ResultGlyphStates resultGlyphStates(Bridge& bridge, BiometricEvent result);

/// What the glyph shows for something that was noticed and did not match.
GlyphState detectionGlyphState(Bridge& bridge);

/// What the glyph shows while nothing happens.
GlyphState restingGlyphState(Bridge& bridge);

/// What the glyph goes back to some time after a try, and after `event`.
GlyphState glyphStateAfterTry(Bridge& bridge);
GlyphState glyphStateAfterTry(Bridge& bridge, BiometricEvent event);

}  // namespace sentrel
