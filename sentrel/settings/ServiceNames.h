#pragma once

#include <string_view>

/// The protected actions of the system itself. In the language of the process's main bundle, each
/// is both the key of its unlock session and the title of its prompt.
namespace sentrel::service_names {

inline constexpr std::string_view appArrangement = "App Arrangement Protection";
inline constexpr std::string_view appSwitcher = "App Switcher Protection";
inline constexpr std::string_view respring = "Respring Protection";
inline constexpr std::string_view reboot = "Reboot Protection";
inline constexpr std::string_view photos = "Photos Protection";
inline constexpr std::string_view appDelete = "App Delete Protection";
inline constexpr std::string_view notifications = "Notifications Protection";

}  // namespace sentrel::service_names

namespace sentrel {

/// Photos, which is protected as an application too.
inline constexpr std::string_view photosBundleIdentifier = "com.apple.mobileslideshow";

}  // namespace sentrel
