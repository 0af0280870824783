#pragma once

/// What travels on the bus: the names and shapes that both sides of a conversation share.
///
/// A request is the method `askMethod` of `messagesInterface` with channel, message and user info;
/// its reply is a user info. A mach service is a bus name of its own; its messages are requests on
/// the channel of the service's name. A notification is a signal of `notificationsInterface` with
/// its name and user info. BusCodec.h has the shape of a user info.
namespace sentrel::bus::protocol {

inline constexpr const char* objectPath = "/com/quorvin/sentrel";

inline constexpr const char* messagesInterface = "com.quorvin.sentrel.Messages";
inline constexpr const char* askMethod = "Ask";
inline constexpr const char* askSignature = "ssaa{sv}";
inline constexpr const char* answerSignature = "aa{sv}";

inline constexpr const char* notificationsInterface = "com.quorvin.sentrel.Notifications";
inline constexpr const char* darwinSignal = "Darwin";
inline constexpr const char* distributedSignal = "Distributed";

inline constexpr const char* machServicePrefix = "com.quorvin.sentrel.mach.";

/// The messages to a service: the content of one for an XPC connection, and a call of the audio
/// control's object.
inline constexpr const char* xpcMessage = "xpc";
inline constexpr const char* hapticIntensityMessage = "setHapticIntensity:";
inline constexpr const char* hapticIntensityKey = "intensity";

/// The error replies: a request that makes no sense, and one that could not be answered.
inline constexpr const char* malformedError = "com.quorvin.sentrel.Error.Malformed";
inline constexpr const char* failedError = "com.quorvin.sentrel.Error.Failed";

}  // namespace sentrel::bus::protocol
