#pragma once

#include <string_view>

#include "device/storage/PropertyListFault.h"

namespace sentrel::storage {

/// Reads a property list in the binary form, each object once.
///
/// Every object must lie between header and offset table and be of a type that a PropertyList has.
/// A leaf may be shared, as writers do; a container may not, since a few nested shared containers
/// unfold to any size, or to a circle. What the file unfolds to must fit the size limit as XML,
/// or it could not be written back.
///
/// Ours and not libplist's, which follows a container as often as it is reached, takes types that a
/// PropertyList does not have and tells dates in 32 bits. What this accepts, libplist reads as the
/// same value.
PropertyListReading readBinary(std::string_view file);

}  // namespace sentrel::storage
