#pragma once

#include <string_view>

/// The entries of a folder record and of the icons in it.
namespace sentrel::folder_keys {

inline constexpr std::string_view displayName = "SentrelFolderDisplayName";
inline constexpr std::string_view allIcons = "SentrelAllIcons";
inline constexpr std::string_view bundleIdentifier = "SentrelBundleIdentifier";

}  // namespace sentrel::folder_keys
