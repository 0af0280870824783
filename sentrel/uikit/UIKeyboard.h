#pragma once

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"

namespace sentrel {

/// How much the system's keyboard takes of a screen of that size, at its bottom, in points.
SENTREL_API double systemKeyboardHeight(CGSize screen);

}  // namespace sentrel
