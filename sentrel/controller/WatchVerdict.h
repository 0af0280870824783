#pragma once

#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// Whether what is known of the paired watch lets it stand in for its owner: connected, active and
/// near, on the wrist, unlocked, with a signal that is strong enough and is one at all. What the
/// answer does not say, or says by a value of another type, does not hold.
bool watchAllowsUnlock(const PropertyList& answer);

}  // namespace sentrel
