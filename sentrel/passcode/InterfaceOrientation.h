#pragma once

#include <cstdint>

#include "sentrel/platform/Export.h"

// Exported under their own names, for whoever loads the library. Orientations are the numbers of
// UIInterfaceOrientation.
extern "C" {

/// The bit of that orientation in a mask; 0 for a number that has none.
SENTREL_API std::uint64_t UIInterfaceOrientationMaskFromOrientation(std::int64_t orientation);

/// How far the interface is turned from upright, in radians, clockwise; 0 for any other number.
SENTREL_API double UIInterfaceOrientationAngleOfOrientation(std::int64_t orientation);
}
