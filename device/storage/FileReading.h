#pragma once

#include <string>
#include <variant>

#include "device/storage/PropertyListFault.h"

namespace sentrel::storage {

/// The content of the file at `hostPath`, if it is a regular file within the size limit. Nothing
/// else is read from, and no file that is not regular is waited for.
std::variant<std::string, PropertyListFault> readWholeFile(const std::string& hostPath);

}  // namespace sentrel::storage
