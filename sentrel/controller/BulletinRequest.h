#pragma once

#include <cstdint>

#include "sentrel/platform/BBBulletinRequest.h"
#include "sentrel/platform/Export.h"

namespace sentrel {

// What a notification's request is tagged with between the parts of a hooking module, for as long
// as it lives. The library itself reads neither. Main thread only.

/// The request's place in its feed; 0 where none was set.
SENTREL_API std::uint64_t sn__FeedIndex(const AssociatedObjects& request);
SENTREL_API void setSn__FeedIndex(AssociatedObjects& request, std::uint64_t value);

/// Whether the notification's content is to be hidden; NO where that was not set.
SENTREL_API bool sn__Protected(const AssociatedObjects& request);
SENTREL_API void setSn__Protected(AssociatedObjects& request, bool value);

}  // namespace sentrel
