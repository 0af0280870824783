#include "sentrel/controller/BiometricEvents.h"

#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/SystemVersion.h"

namespace sentrel {
namespace {

BiometricEvent detectionEvent(Bridge& bridge) {
  return bridge.isIOS14() ? 4 : 5;
}

/// Where the sensor's event and the glyph's state for it go by the same number.
GlyphState sameNumber(BiometricEvent event) {
  return static_cast<GlyphState>(event);
}

bool isEarlyResult(BiometricEvent event) {
  return event == 1 || event == matchEvent || event == 7;
}

BiometricEvent resultLimit(Bridge& bridge) {
  return bridge.supportsFaceID() || !bridge.isDeviceHasPasscode() ? 12 : 9;
}

GlyphState firstGlyphState(Bridge& bridge, BiometricEvent result) {
  if (result == 1 || result == 12)
    return bridge.supportsFaceID() ? detectionGlyphState(bridge) : GlyphState::scanning;
  if (result == matchEvent)
    return bridge.isIOS11() ? GlyphState::recognized : GlyphState::recognizedBefore11;
  return sameNumber(result);
}

/// For a result that the glyph has no state of its own for.
GlyphState lateResultGlyphState(Bridge& bridge, BiometricEvent result) {
  if (bridge.supportsFaceID())
    return bridge.isIOS12() ? detectionGlyphState(bridge) : GlyphState::notRecognized;
  return result == 10 ? GlyphState::notRecognizedAgain : GlyphState::idle;
}

}  // namespace

BiometricEvent endOfAttemptsEvent(Bridge& bridge) {
  return isSystemVersionAtLeast(bridge.platform(), 13.5F) ? 28 : 13;
}

bool isFailedTry(Bridge& bridge, BiometricEvent event) {
  return event == 2 || event == 10 || event == detectionEvent(bridge);
}

bool isResult(Bridge& bridge, BiometricEvent event) {
  return isEarlyResult(event) || event >= resultLimit(bridge);
}

GlyphState failedTryGlyphState(Bridge& bridge, BiometricEvent event) {
  return bridge.supportsFaceID() && bridge.isIOS12() ? detectionGlyphState(bridge)
                                                     : sameNumber(event);
}

ResultGlyphStates resultGlyphStates(Bridge& bridge, BiometricEvent result) {
  const GlyphState first = firstGlyphState(bridge, result);
  const BiometricEvent limit = bridge.supportsFaceID() ? 13 : 9;
  const bool isLate = result != endOfAttemptsEvent(bridge) && result >= limit;
  return {first, isLate ? lateResultGlyphState(bridge, result) : first};
}

GlyphState detectionGlyphState(Bridge& bridge) {
  return bridge.isIOS14() ? GlyphState::detection14 : GlyphState::detection;
}

GlyphState restingGlyphState(Bridge& bridge) {
  return bridge.supportsFaceID() && !bridge.isIOS12() ? GlyphState::notRecognized
                                                      : GlyphState::idle;
}

GlyphState glyphStateAfterTry(Bridge& bridge) {
  return bridge.supportsFaceID() ? detectionGlyphState(bridge) : GlyphState::idle;
}

GlyphState glyphStateAfterTry(Bridge& bridge, BiometricEvent event) {
  return bridge.supportsFaceID() ? detectionGlyphState(bridge) : sameNumber(event);
}

}  // namespace sentrel
