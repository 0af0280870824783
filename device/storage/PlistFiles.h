#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <variant>

#include "device/storage/DeviceRoot.h"
#include "device/storage/PropertyListFault.h"
#include "sentrel/platform/PropertyListFiles.h"

namespace sentrel::storage {

class FolderLock;

using DictionaryFileReading = std::variant<PropertyList::Dictionary, PropertyListFault>;

/// The dictionary in the file at `hostPath`, a path of this machine, or why there is none. A
/// reading that fails for a reason that may pass is tried twice, the second time with the process's
/// spare descriptor.
DictionaryFileReading readDictionaryFile(const std::string& hostPath);

/// The property-list files under a device root: XML and binary are read; XML is written, and binary
/// what XML cannot carry. May be used from any thread.
class PlistFiles final : public PropertyListFiles {
 public:
  /// `patience` is how long a lock of somebody else's is waited for.
  explicit PlistFiles(DeviceRoot root, Seconds patience = Seconds(2));

  DictionaryReading readDictionary(const std::string& path) const override;

  /// False, too, for a dictionary that could not be read back as it is. Dates keep whole seconds.
  bool writeDictionary(const std::string& path,
                       const PropertyList::Dictionary& dictionary) override;

  /// For what stands at the end of the links at `path`. Not to outlive this object.
  std::unique_ptr<Lock> lock(const std::string& path) override;

 private:
  class HeldLock;

  const DeviceRoot root_;
  const Seconds patience_;
  std::recursive_timed_mutex mutex_;
  /// Of the thread that has the mutex.
  std::map<std::string, std::weak_ptr<FolderLock>> held_;
};

}  // namespace sentrel::storage
