#include "sentrel/bridge/MessageCoding.h"

#include <utility>

namespace sentrel {
namespace {

constexpr std::string_view titleKey = "TITLE_KEY";
constexpr std::string_view messageKey = "MESSAGE_KEY";

std::string textUnder(const UserInfo& userInfo, std::string_view key) {
  const auto* text = userInfo ? find<std::string>(*userInfo, key) : nullptr;
  return text ? *text : std::string();
}

template <class T>
std::optional<T> copyOf(const PropertyList* data) {
  const T* value = data ? data->as<T>() : nullptr;
  return value ? std::optional<T>(*value) : std::nullopt;
}

}  // namespace

UserInfo encodeMessageData(PropertyList value) {
  PropertyList::Dictionary userInfo;
  userInfo.emplace(messageDataKey, std::move(value));
  return userInfo;
}

UserInfo encodeArgument(const messages::AuthenticationPrompt& prompt) {
  PropertyList::Dictionary userInfo;
  userInfo.emplace(titleKey, prompt.title);
  userInfo.emplace(messageKey, prompt.message);
  return userInfo;
}

const PropertyList* messageData(const UserInfo& userInfo) noexcept {
  return userInfo ? find(*userInfo, messageDataKey) : nullptr;
}

std::optional<std::string> decodeText(const UserInfo& userInfo) {
  return copyOf<std::string>(messageData(userInfo));
}

messages::AuthenticationPrompt decodePrompt(const UserInfo& userInfo) {
  return {textUnder(userInfo, titleKey), textUnder(userInfo, messageKey)};
}

template <>
std::optional<PropertyList::Array> decodeReply(const UserInfo& reply) {
  return copyOf<PropertyList::Array>(messageData(reply));
}

template <>
std::optional<PropertyList::Dictionary> decodeReply(const UserInfo& reply) {
  return copyOf<PropertyList::Dictionary>(messageData(reply));
}

}  // namespace sentrel
