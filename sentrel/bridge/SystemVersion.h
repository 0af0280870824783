#pragma once

#include "sentrel/platform/Platform.h"

namespace sentrel {

/// Whether the system's version, read as one number as far as it makes sense ("13.3.1" is 13.3), is
/// at least `version`.
inline bool isSystemVersionAtLeast(const Platform& platform, float version) {
  return PropertyList(platform.system->systemVersion()).floatValue() >= version;
}

}  // namespace sentrel
