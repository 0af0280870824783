#pragma once

#include "sentrel/platform/Platform.h"

namespace sentrel {

/// Stands in for the services that `platform` has none of, by ones that are never there: whoever
/// uses them is told so at once, or on a turn of the main queue. That and the main bundle have to
/// be there.
void addAbsentServices(Platform& platform);

}  // namespace sentrel
