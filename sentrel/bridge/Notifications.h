#pragma once

#include <string_view>

/// The notifications that processes send each other. All but the last are Darwin notifications
/// without payload.
namespace sentrel::notifications {

/// The settings file changed; reload.
inline constexpr std::string_view settingsChanged = "com.quorvin.sentrelSettingsChanged";

/// The home-screen process is to lock the device, the first one also when it looks locked.
inline constexpr std::string_view forceLockUI = "com.quorvin.sentrelForceLockUINotification";
inline constexpr std::string_view lockUI = "com.quorvin.sentrelLockUINotification";

/// The home-screen process is to take the biometric sensor, to give it back, or to drop every
/// assertion on it that was taken under this system's name.
inline constexpr std::string_view startBioMetricAssertion =
    "com.quorvin.sentrelStartBioMetricAssertionNotification";
inline constexpr std::string_view stopBioMetricAssertion =
    "com.quorvin.sentrelStopBioMetricAssertionNotification";
inline constexpr std::string_view resetBioMetricAssertion =
    "com.quorvin.sentrelResetBioMetricAssertionNotification";

/// A finger was lifted. The local centre of the process that noticed has it too.
inline constexpr std::string_view touchIDFingerUp =
    "com.quorvin.sentrelTouchIDFingerUpNotification";

/// A request ended, in success or in any other way.
inline constexpr std::string_view authenticationSuccess =
    "com.quorvin.sentrelAuthenticationSuccess";
inline constexpr std::string_view authenticationCancelled =
    "com.quorvin.sentrelAuthenticationCancelled";

/// Distributed: a biometric event, its code under pearlIDEventCodeKey.
inline constexpr std::string_view pearlID = "com.quorvin.sentrelPearlIDNotification";
inline constexpr std::string_view pearlIDEventCodeKey = "EC";

}  // namespace sentrel::notifications
