#include "sentrel/controller/WatchVerdict.h"

#include <cstdint>
#include <string_view>

#include "sentrel/watch/WatchMessages.h"

namespace sentrel {
namespace {

constexpr std::int64_t onWrist = 3;
constexpr std::int64_t unlocked = 0;

// In dBm. Zero and above are no measurement.
constexpr std::int64_t weakestRSSI = -60;
constexpr std::int64_t strongestRSSI = -1;

bool isTrue(const PropertyList::Dictionary& answer, std::string_view key) {
  const PropertyList* value = find(answer, key);
  const bool* boolean = value ? value->as<bool>() : nullptr;
  return boolean && *boolean;
}

const std::int64_t* integer(const PropertyList::Dictionary& answer, std::string_view key) {
  const PropertyList* value = find(answer, key);
  return value ? value->as<std::int64_t>() : nullptr;
}

bool is(const std::int64_t* value, std::int64_t expected) {
  return value && *value == expected;
}

}  // namespace

bool watchAllowsUnlock(const PropertyList& answer) {
  const auto* entries = answer.as<PropertyList::Dictionary>();
  if (!entries) return false;
  const std::int64_t* rssi = integer(*entries, watch::rssiKey);
  return isTrue(*entries, watch::connectedKey) && isTrue(*entries, watch::activeKey) &&
         isTrue(*entries, watch::nearbyKey) &&
         is(integer(*entries, watch::wristStateKey), onWrist) &&
         is(integer(*entries, watch::lockStateKey), unlocked) && rssi && *rssi >= weakestRSSI &&
         *rssi <= strongestRSSI;
}

}  // namespace sentrel
