#include "host/SpringBoardResponder.h"

#include "sentrel/bridge/MessageCoding.h"
#include "sentrel/bridge/Messages.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel::host {
namespace {

template <class T>
UserInfo replyWith(const std::optional<T>& value) {
  return value ? encodeMessageData(*value) : UserInfo(PropertyList::Dictionary());
}

UserInfo replyWith(bool value) {
  return encodeMessageData(value);
}

/// Answers with what `question` says of the device.
template <class Reply>
std::function<UserInfo(const UserInfo&)> answerTo(Reply (*question)()) {
  return [question](const UserInfo&) { return replyWith(question()); };
}

/// Answers with what `question` says of the identifier that was sent; a request without one asks
/// about nothing.
template <class Reply>
std::function<UserInfo(const UserInfo&)> answerTo(Reply (*question)(const std::string&)) {
  return [question](const UserInfo& userInfo) {
    return replyWith(question(decodeText(userInfo).value_or("")));
  };
}

UserInfo suspendFrontMostApp(const UserInfo&) {
  SNUtils::suspendFrontMostApp();
  return std::nullopt;
}

/// Shows the prompt that an application may not show itself, over whatever is on the screen. The
/// application hears of the result by a notification.
UserInfo handleAuthentication(const UserInfo& userInfo) {
  const messages::AuthenticationPrompt prompt = decodePrompt(userInfo);
  if (prompt.title.empty()) return std::nullopt;
  SentrelController::sharedInstance().requiresAuthentication(prompt.title, prompt.message, {});
  return std::nullopt;
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

/// Two questions go by this name, told apart by whether there is any user info.
UserInfo answerLastUnlocked(const UserInfo& userInfo) {
  if (!userInfo) return replyWith(SentrelController::sharedInstance().isAlertShowing());
  const auto key = sessionKey(userInfo);
  return replyWith(key &&
                   SentrelController::sharedInstance().shouldIgnoreAuthentication(key->item()));
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
  answer(messages::AppName(), answerTo(SNUtils::appName));
  answer(messages::IsTouchIDSupported(), answerTo(SNUtils::isBioMetricsSupported));
  answer(messages::IsPasscodeSet(), answerTo(SNUtils::isDeviceHasPasscode));
  answer(messages::ParentFolderProtected(), answerTo(SNUtils::protectedFolderData));
  answer(messages::HasParentFolder(), answerTo(SNUtils::hasAnyParentFolder));
  answer(messages::IsSystemApplication(), answerTo(SNUtils::isSystemApplication));
  answer(messages::IsApplication(), answerTo(SNUtils::isApplication));
  answer(messages::IsHiddenApplication(), answerTo(SNUtils::isHiddenApp));
  answer(messages::IsDeviceLocked(), answerTo(SNUtils::isDeviceLocked));
  answer(messages::IsDarkModeEnabled(), answerTo(SNUtils::isDarkModeEnabled));
  answer(messages::IsFingerOn(), answerTo(SNUtils::isFingerOn));
  answer(messages::SuspendFrontMostApp(), suspendFrontMostApp);
  answer(messages::Unlocked(), recordUnlock);
  answer(messages::LastUnlocked(), answerLastUnlocked);
  answer(messages::HandleAuthentication(), handleAuthentication);
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
  if (answer == answers_.end()) return std::nullopt;
  try {
    return answer->second(userInfo);
  } catch (const PlatformException&) {
    return std::nullopt;
  }
}

std::string SpringBoardResponder::channel() {
  return std::string(messageChannelName);
}

}  // namespace sentrel::host
