#pragma once

#include <optional>
#include <string_view>

#include "device/storage/PropertyListFault.h"

namespace sentrel::storage {

/// Judges an XML property list before libplist sees it; none when libplist will read it whole,
/// unchanged and in bounded time.
///
/// libplist recurses to any depth, drops a key without a value, reads "abc" and
/// 99999999999999999999 as some integer and any text as some date or data, and takes the first of
/// several roots. All of these are faults here, since the next rewrite of the file would make the
/// loss final. Of the mark-up only what both readers surely split alike is let through.
std::optional<PropertyListFault> checkXml(std::string_view document);

}  // namespace sentrel::storage
