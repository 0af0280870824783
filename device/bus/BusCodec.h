#pragma once

#include <optional>

#include "sentrel/platform/MessageChannel.h"

namespace sdbus {
class Message;
}

namespace sentrel::bus {

// A user info travels as "aa{sv}", an array of at most one dictionary, so that none and empty stay
// apart. In it a boolean, an integer, a real, a string, data, a date, an array and a dictionary are
// "b", "x", "d", "s", "ay", "(d)", "av" and "a{sv}", each inside a variant.

/// Appends `userInfo` to `message`. False where it cannot be sent as it is; the message is then
/// good for nothing.
[[nodiscard]] bool appendUserInfo(sdbus::Message& message, const UserInfo& userInfo);

/// Reads a user info from where `message` stands. The outer none: what stands there is no user
/// info, or out of bounds.
[[nodiscard]] std::optional<UserInfo> readUserInfo(sdbus::Message& message);

}  // namespace sentrel::bus
