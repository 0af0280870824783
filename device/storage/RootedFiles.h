#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <utility>

#include "device/storage/DeviceRoot.h"
#include "sentrel/platform/FileSystem.h"

namespace sentrel::storage {

/// The files under a device root.
class RootedFiles final : public FileSystem {
 public:
  explicit RootedFiles(DeviceRoot root) : root_(std::move(root)) {}

  /// A link counts as what it leads to, so one that leads nowhere is not there.
  bool fileExists(const std::string& path) const override {
    const auto hostPath = root_.hostPath(path);
    struct stat status {};
    if (!hostPath) return false;
    return ::stat(hostPath->c_str(), &status) == 0 || !meansNothingThere(errno);
  }

 private:
  static bool meansNothingThere(int error) noexcept {
    return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ENAMETOOLONG;
  }

  DeviceRoot root_;
};

}  // namespace sentrel::storage
