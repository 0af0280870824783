#include "host/SpringBoardResponder.h"

#include "sentrel/bridge/MessageCoding.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel::host {
namespace {

template <class T>
UserInfo replyWith(const std::optional<T>& value) {
  return value ? encodeMessageData(*value) : UserInfo(PropertyList::Dictionary());
}

/// The key that a session message names; a folder record is a new key each time.
std::optional<SessionKey> sessionKey(const UserInfo& userInfo) {
  const PropertyList* data = messageData(userInfo);
  if (!data) return std::nullopt;
  if (const auto* text = data->as<std::string>()) return SessionKey(*text);
  return SessionKey::record(*data);
}

UserInfo recordUnlock(const UserInfo& userInfo) {
  SentrelController::sharedInstance().updateLastAuthenticationTime(sessionKey(userInfo));
  return std::nullopt;
}

UserInfo answerLastUnlocked(const UserInfo& userInfo) {
  const auto key = sessionKey(userInfo);
  return encodeMessageData(
      key && SentrelController::sharedInstance().shouldIgnoreAuthentication(key->item()));
}

UserInfo answerKnownNetworks(const UserInfo&) {
  return replyWith(SNWiFiManager::sharedManager().knownNetworks());
}

UserInfo answerCurrentNetwork(const UserInfo&) {
  return replyWith(SNWiFiManager::sharedManager().currentNetWork());
}

}  // namespace

SpringBoardResponder::SpringBoardResponder(LogSink logSink) {
  const auto answer = [this]<class Message>(Message, Answer computed) {
    answers_.emplace(Message::name, std::move(computed));
  };
  answer(messages::Unlocked(), recordUnlock);
  answer(messages::LastUnlocked(), answerLastUnlocked);
  answer(messages::KnownNetworks(), answerKnownNetworks);
  answer(messages::CurrentNetwork(), answerCurrentNetwork);
  answer(messages::LogMessage(), [logSink = std::move(logSink)](const UserInfo& userInfo) {
    if (const auto line = decodeText(userInfo); line && logSink) logSink(*line);
    return UserInfo();
  });
}

UserInfo SpringBoardResponder::operator()(const std::string& message,
                                          const UserInfo& userInfo) const {
  const auto answer = answers_.find(message);
  return answer == answers_.end() ? std::nullopt : answer->second(userInfo);
}

}  // namespace sentrel::host
