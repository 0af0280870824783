#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// What libplist reads out of a property list, XML or binary; none where it refuses. It guards
/// against nothing, so `bytes` must be what our own reader has accepted.
std::optional<PropertyList> readByLibplist(std::string_view bytes);

/// `document`, which is XML, in the binary form as libplist writes it.
std::string binaryByLibplist(std::string_view document);

/// Equal, where a real that is no number equals another.
bool isSameValue(const PropertyList& left, const PropertyList& right);

}  // namespace sentrel
