#pragma once

#include <cstddef>

namespace sentrel {

/// The sets of protected items, in the order in which they are loaded.
enum class ItemSet { applications, notificationApps, settings, flipSwitches, controlCenterItems };
inline constexpr std::size_t itemSetCount = 5;

}  // namespace sentrel
