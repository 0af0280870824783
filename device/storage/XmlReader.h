#pragma once

#include <string_view>

#include "device/storage/PropertyListFault.h"

namespace sentrel::storage {

/// Reads a property list in XML, of any size, in time that grows with its size.
///
/// Ours and not libplist's, which recurses to any depth, drops a key without a value, takes the
/// first of several roots, makes some integer of "abc" and of 99999999999999999999 and some date or
/// data of any text, follows the program's locale in reals, and takes time that grows with the
/// square of the escapes in a text; also, going over its tree once more costs a third of its time.
/// What this accepts, libplist reads as the same value.
PropertyListReading readXml(std::string_view document);

}  // namespace sentrel::storage
