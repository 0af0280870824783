#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "device/storage/PropertyListFault.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel::storage {

/// Reads a whole property list, XML or binary, in bounded time and memory. Of keys that a
/// dictionary has twice the last one counts. XML may begin with a byte-order mark.
PropertyListReading parsePropertyList(std::string_view bytes);

/// The XML form, which parsePropertyList() reads back as an equal value, but for dates, of which
/// XML keeps whole seconds. The binary form where XML has none: for a text with a control
/// character, or a date outside the years 1 to 9999. None when neither can be read back: text that
/// is not UTF-8 or holds a zero, a date that is no number, or a value beyond the limits.
std::optional<std::string> serializePropertyList(const PropertyList& value);
std::optional<std::string> serializePropertyList(const PropertyList::Dictionary& dictionary);

}  // namespace sentrel::storage
