#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "sentrel/platform/MessageChannel.h"

namespace sdbus {
class Message;
}

namespace sentrel::bus {

// A user info travels as "aa{sv}", an array of at most one dictionary, so that none and empty stay
// apart. In it a boolean, an integer, a real, a string, data, a date, an array and a dictionary are
// "b", "x", "d", "s", "ay", "(d)", "av" and "a{sv}", each inside a variant.

/// The most that a user info may hold, as measured by the codec, which counts a little more than
/// the bus needs. Bus connections are cut by larger messages than the bus allows, so this is well
/// below what a private bus allows.
inline constexpr std::size_t maximumUserInfoSize = 8 << 20;

/// The number of dictionaries and arrays inside each other. The bus itself ends at 64 containers,
/// of which a dictionary takes three.
inline constexpr int maximumUserInfoDepth = 16;

/// Appends `userInfo` to `message`. False where it cannot be sent as it is (too deep, too large,
/// text that is no UTF-8 or holds a NUL); the message is then good for nothing.
[[nodiscard]] bool appendUserInfo(sdbus::Message& message, const UserInfo& userInfo);

/// Reads a user info from where `message` stands. The outer none: what stands there is no user
/// info, or out of bounds.
[[nodiscard]] std::optional<UserInfo> readUserInfo(sdbus::Message& message);

/// Text may go into a message only if nothing of it would be cut off.
[[nodiscard]] bool isWholeText(const std::string& text);

}  // namespace sentrel::bus
