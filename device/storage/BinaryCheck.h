#pragma once

#include <optional>
#include <string_view>

#include "device/storage/PropertyListFault.h"

namespace sentrel::storage {

/// Judges a binary property list before libplist sees it; none when libplist will read it whole and
/// unchanged.
///
/// Every object must lie between header and offset table and be of a type that a PropertyList has.
/// A leaf may be shared, as writers do; a container may not, since a few nested shared containers
/// unfold to any size, or to a circle. What the file unfolds to must fit the size limit as XML,
/// or it could not be written back.
std::optional<PropertyListFault> checkBinary(std::string_view file);

}  // namespace sentrel::storage
