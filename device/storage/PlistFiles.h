#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "device/storage/DeviceRoot.h"
#include "device/storage/PropertyListFault.h"
#include "sentrel/platform/PropertyListFiles.h"

namespace sentrel::storage {

using DictionaryReading = std::variant<PropertyList::Dictionary, PropertyListFault>;

/// The dictionary in the file at `hostPath`, a path of this machine, or why there is none.
DictionaryReading readDictionaryFile(const std::string& hostPath);

/// The property-list files under a device root: XML and binary are read, XML is written, and binary
/// what XML cannot carry. May be
/// used from any thread; of two writers at once the later one wins.
class PlistFiles final : public PropertyListFiles {
 public:
  explicit PlistFiles(DeviceRoot root) : root_(std::move(root)) {}

  std::optional<PropertyList::Dictionary> readDictionary(const std::string& path) const override;

  /// False, too, for a dictionary that could not be read back as it is. Dates keep whole seconds.
  bool writeDictionary(const std::string& path,
                       const PropertyList::Dictionary& dictionary) override;

 private:
  DeviceRoot root_;
};

}  // namespace sentrel::storage
