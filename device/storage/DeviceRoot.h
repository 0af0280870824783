#pragma once

#include <optional>
#include <string>

namespace sentrel::storage {

/// The folder of this machine under which every absolute path of the device lies.
class DeviceRoot {
 public:
  /// `folder` is a path of this machine; "/" when this machine is the device.
  explicit DeviceRoot(std::string folder);

  /// Where `devicePath` lies on this machine. None for a path that is not absolute, that has a ".."
  /// (through which it could leave the root) or that has a zero byte (at which it would be cut).
  std::optional<std::string> hostPath(const std::string& devicePath) const;

 private:
  std::string folder_;
};

}  // namespace sentrel::storage
