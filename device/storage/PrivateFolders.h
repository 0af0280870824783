#pragma once

#include <string>

namespace sentrel::storage {

/// Makes the folder at `hostPath` and those above it that are not there, each open to its owner
/// alone, whatever the umask. Whether the folder is there now.
bool makePrivateFolders(const std::string& hostPath);

}  // namespace sentrel::storage
