#pragma once

#include <cstdint>
#include <string_view>

/// What travels between a process that asks about the watch and the sharing daemon.
namespace sentrel::watch {

/// In a query: true, the mark of this protocol, and the array of what is asked for.
inline constexpr std::string_view eventKey = "SNWatchEventKey";
inline constexpr std::string_view queryKey = "SNWatchQueryKey";

/// In a reply: the dictionary of what is known.
inline constexpr std::string_view resultKey = "result";

/// What a query may ask for. 5 means nothing.
enum class Item : std::int64_t {
  wristState = 0,
  lockState = 1,
  nearby = 2,
  active = 3,
  connected = 4,
  firstRSSI = 6,
  preferredRSSI = 7,
  name = 8,
};

/// In a result; an entry that is absent says nothing. The states are integers, the signal strength
/// an integer in dBm, the next three booleans, the name a string.
inline constexpr std::string_view wristStateKey = "pairedWatchWristState";
inline constexpr std::string_view lockStateKey = "pairedWatchLockState";
inline constexpr std::string_view rssiKey = "rssi";
inline constexpr std::string_view nearbyKey = "nearby";
inline constexpr std::string_view activeKey = "active";
inline constexpr std::string_view connectedKey = "connected";
inline constexpr std::string_view nameKey = "name";

}  // namespace sentrel::watch
