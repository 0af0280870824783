#include "sentrel/controller/BiometricEvents.h"

#include "sentrel/bridge/SNUtils.h"
#include "sentrel/bridge/SystemVersion.h"

namespace sentrel {
namespace {

bool isEarlyResult(BiometricEvent event) {
  return event == 1 || event == matchEvent || event == 7;
}

BiometricEvent resultLimit() {
  return SNUtils::supportsFaceID() || !SNUtils::isDeviceHasPasscode() ? 12 : 9;
}

std::int64_t firstModifiedCode(BiometricEvent result) {
  if (result == 1 || result == 12) return SNUtils::supportsFaceID() ? detectionEvent() : 3;
  if (result == matchEvent) return SNUtils::isIOS11() ? 12 : 6;
  return result;
}

/// For a result that the glyph has no state of its own for.
std::int64_t lateResultGlyphState(BiometricEvent result) {
  if (SNUtils::supportsFaceID()) return SNUtils::isIOS12() ? detectionEvent() : 2;
  return result == 10 ? 10 : 0;
}

}  // namespace

BiometricEvent detectionEvent() {
  return SNUtils::isIOS14() ? 4 : 5;
}

BiometricEvent endOfAttemptsEvent(const Platform& platform) {
  return isSystemVersionAtLeast(platform, 13.5F) ? 28 : 13;
}

bool isFailedTry(BiometricEvent event) {
  return event == 2 || event == 10 || event == detectionEvent();
}

bool isResult(BiometricEvent event) {
  return isEarlyResult(event) || event >= resultLimit();
}

std::int64_t failedTryGlyphState(BiometricEvent event) {
  return SNUtils::supportsFaceID() && SNUtils::isIOS12() ? detectionEvent() : event;
}

ModifiedCode modifiedCode(BiometricEvent result, BiometricEvent endOfAttempts) {
  const std::int64_t first = firstModifiedCode(result);
  const BiometricEvent limit = SNUtils::supportsFaceID() ? 13 : 9;
  const bool isLate = result != endOfAttempts && result >= limit;
  return {first, isLate ? lateResultGlyphState(result) : first};
}

std::int64_t restingGlyphState() {
  return SNUtils::supportsFaceID() && !SNUtils::isIOS12() ? 2 : 0;
}

std::int64_t glyphStateAfterTry(BiometricEvent event) {
  return SNUtils::supportsFaceID() ? detectionEvent() : event;
}

}  // namespace sentrel
