#pragma once

#include <optional>
#include <string>

#include "sentrel/bridge/Messages.h"

namespace sentrel {

/// How arguments and replies become the dictionaries that travel, for both ends of the channel.
/// Decoding never trusts its input: a missing entry or one of a wrong type reads as none, and a
/// boolean is read leniently from whatever is there.

SENTREL_API UserInfo encodeMessageData(PropertyList value);

inline UserInfo encodeArgument(const messages::Nothing&) {
  return std::nullopt;
}
inline UserInfo encodeArgument(const std::string& text) {
  return encodeMessageData(text);
}
inline UserInfo encodeArgument(const PropertyList& value) {
  return encodeMessageData(value);
}
SENTREL_API UserInfo encodeArgument(const messages::AuthenticationPrompt& prompt);

/// The reply's entry, or null.
SENTREL_API const PropertyList* messageData(const UserInfo& userInfo) noexcept;

SENTREL_API std::optional<std::string> decodeText(const UserInfo& userInfo);
SENTREL_API messages::AuthenticationPrompt decodePrompt(const UserInfo& userInfo);

template <class Reply>
Reply decodeReply(const UserInfo& reply);

template <>
inline messages::Nothing decodeReply(const UserInfo&) {
  return {};
}
template <>
inline bool decodeReply(const UserInfo& reply) {
  const PropertyList* data = messageData(reply);
  return data && data->boolValue();
}
template <>
inline std::optional<std::string> decodeReply(const UserInfo& reply) {
  return decodeText(reply);
}
template <>
SENTREL_API std::optional<PropertyList::Array> decodeReply(const UserInfo& reply);
template <>
SENTREL_API std::optional<PropertyList::Dictionary> decodeReply(const UserInfo& reply);

}  // namespace sentrel
