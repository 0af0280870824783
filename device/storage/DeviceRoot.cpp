#include "device/storage/DeviceRoot.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace sentrel::storage {

DeviceRoot::DeviceRoot(std::string folder) : folder_(std::move(folder)) {
  while (folder_.ends_with('/'))
    folder_.pop_back();
}

std::optional<std::string> DeviceRoot::hostPath(const std::string& devicePath) const {
  if (!devicePath.starts_with('/') || devicePath.find('\0') != devicePath.npos) return std::nullopt;
  const std::filesystem::path path(devicePath);
  if (std::find(path.begin(), path.end(), "..") != path.end()) return std::nullopt;
  return folder_ + devicePath;
}

}  // namespace sentrel::storage
