#pragma once

#include <optional>
#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// Property-list files of the device. Paths are absolute paths of the device.
class SENTREL_API PropertyListFiles {
 public:
  virtual ~PropertyListFiles() = default;

  /// The dictionary that the file at `path` holds, or none when the file is missing, unreadable,
  /// damaged, out of bounds in size or depth, or holds anything but a dictionary. Time and memory
  /// are bounded whatever the file holds.
  virtual std::optional<PropertyList::Dictionary> readDictionary(const std::string& path) const = 0;

  /// Puts a file that holds `dictionary` in the place of the file at `path`. Other processes see
  /// either the old file or the new one, never a mixture, also after a crash or a full disk.
  /// Returns whether the new file stands; on false the old one is untouched.
  virtual bool writeDictionary(const std::string& path,
                               const PropertyList::Dictionary& dictionary) = 0;
};

}  // namespace sentrel
