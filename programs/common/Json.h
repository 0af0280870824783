#pragma once

#include <string>

#include "sentrel/platform/PropertyList.h"

namespace sentrel::programs {

/// A value as one line of JSON. Data is a text in base64, a date the seconds since 1970; a real
/// that JSON has no number for is null.
std::string json(const PropertyList& value);

}  // namespace sentrel::programs
