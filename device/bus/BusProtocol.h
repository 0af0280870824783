#pragma once

/// What travels on the bus: the names and shapes that both sides of a conversation share.
///
/// A request is the method `askMethod` of `messagesInterface` with channel, message and user info;
/// its reply is a user info. A notification is a signal of `notificationsInterface` with its name
/// and user info. BusCodec.h has the shape of a user info.
namespace sentrel::bus::protocol {

inline constexpr const char* objectPath = "/com/quorvin/sentrel";

inline constexpr const char* messagesInterface = "com.quorvin.sentrel.Messages";
inline constexpr const char* askMethod = "Ask";
inline constexpr const char* askSignature = "ssaa{sv}";
inline constexpr const char* answerSignature = "aa{sv}";

inline constexpr const char* notificationsInterface = "com.quorvin.sentrel.Notifications";
inline constexpr const char* darwinSignal = "Darwin";
inline constexpr const char* distributedSignal = "Distributed";

/// The error replies: a request that makes no sense, and one that could not be answered.
inline constexpr const char* malformedError = "com.quorvin.sentrel.Error.Malformed";
inline constexpr const char* failedError = "com.quorvin.sentrel.Error.Failed";

}  // namespace sentrel::bus::protocol
