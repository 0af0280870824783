#include "device/storage/PrivateFolders.h"

#include <sys/stat.h>

#include <filesystem>
#include <system_error>

namespace sentrel::storage {

bool makePrivateFolders(const std::string& hostPath) {
  std::error_code error;
  std::filesystem::path made;
  for (const auto& part : std::filesystem::path(hostPath)) {
    made /= part;
    // The mask may take away what the owner needs as well.
    if (::mkdir(made.c_str(), 0700) == 0 && ::chmod(made.c_str(), 0700) != 0) return false;
  }
  return std::filesystem::is_directory(hostPath, error);
}

}  // namespace sentrel::storage
