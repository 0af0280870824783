#pragma once

#include <sys/stat.h>

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
    return hostPath && ::stat(hostPath->c_str(), &status) == 0;
  }

 private:
  DeviceRoot root_;
};

}  // namespace sentrel::storage
