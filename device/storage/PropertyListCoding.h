#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "device/storage/PropertyListFault.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel::storage {

/// Reads a whole property list, XML or binary, in bounded time and memory. Of keys that a
/// dictionary has twice the last one counts.
PropertyListReading parsePropertyList(std::string_view bytes);

/// The XML form, which parsePropertyList() reads back as an equal value, but for dates, of which
/// XML keeps whole seconds. None when there is no such form: text that is not UTF-8 or holds a
/// control character, a date outside the years 1 to 9999, or a value beyond the limits.
std::optional<std::string> serializePropertyList(const PropertyList& value);
std::optional<std::string> serializePropertyList(const PropertyList::Dictionary& dictionary);

}  // namespace sentrel::storage
