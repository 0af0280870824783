#pragma once

#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// What the library asks about files on the device. Paths are absolute paths of the device.
class SENTREL_API FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Whether anything stands at `path`; YES where that cannot be told, since something may stand
  /// there that needs protection.
  virtual bool fileExists(const std::string& path) const = 0;
};

}  // namespace sentrel
