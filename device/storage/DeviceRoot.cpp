#include "device/storage/DeviceRoot.h"

#include <string_view>
#include <utility>

namespace sentrel::storage {
namespace {

/// Whether a part of the absolute path is "..".
bool climbs(std::string_view path) {
  constexpr std::string_view step = "/..";
  for (auto at = path.find(step); at != path.npos; at = path.find(step, at + 1)) {
    const std::size_t end = at + step.size();
    if (end == path.size() || path[end] == '/') return true;
  }
  return false;
}

}  // namespace

DeviceRoot::DeviceRoot(std::string folder) : folder_(std::move(folder)) {
  while (folder_.ends_with('/'))
    folder_.pop_back();
}

std::optional<std::string> DeviceRoot::hostPath(const std::string& devicePath) const {
  if (!devicePath.starts_with('/') || devicePath.find('\0') != devicePath.npos) return std::nullopt;
  if (climbs(devicePath)) return std::nullopt;
  std::string path;
  path.reserve(folder_.size() + devicePath.size());
  path.append(folder_).append(devicePath);
  return path;
}

}  // namespace sentrel::storage
