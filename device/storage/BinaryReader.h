#pragma once

#include <string_view>

#include "device/storage/PropertyListFault.h"

namespace sentrel::storage {

/// Reads a binary property list with libplist, once checkBinary() has let it through.
PropertyListReading readBinary(std::string_view file);

}  // namespace sentrel::storage
