#pragma once

#include <cstdint>

#include "sentrel/platform/BiometricObserver.h"
#include "sentrel/platform/Platform.h"

namespace sentrel {

// What the biometric service's numbers mean on the current process's device. The numbers are the
// service's own and differ between its systems and sensors.

inline constexpr BiometricEvent noEvent = 0;
inline constexpr BiometricEvent fingerLiftedEvent = 0;
inline constexpr BiometricEvent matchEvent = 3;
inline constexpr BiometricEvent attemptsExhaustedEvent = 6;

/// A finger or a face was noticed, and did not match.
BiometricEvent detectionEvent();

/// No attempt is left before the device's own passcode is asked for.
BiometricEvent endOfAttemptsEvent(const Platform& platform);

bool isFailedTry(BiometricEvent event);

/// Whether the event ends a try: named so, or at or above what the sensor otherwise reports.
bool isResult(BiometricEvent event);

/// What the glyph shows at first for a failed try.
std::int64_t failedTryGlyphState(BiometricEvent event);

/// Computed once for a result.
struct ModifiedCode {
  /// From the event alone.
  std::int64_t first;
  /// What the glyph shows in the end.
  std::int64_t last;
};
ModifiedCode modifiedCode(BiometricEvent result, BiometricEvent endOfAttempts);

/// What the glyph shows while nothing happens.
std::int64_t restingGlyphState();

/// What the glyph goes back to some time after a try.
std::int64_t glyphStateAfterTry(BiometricEvent event);

}  // namespace sentrel
