#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// What reading a property-list file came to.
struct DictionaryReading {
  enum class Outcome {
    /// There is a `dictionary`.
    read,
    /// Nothing stands at the path.
    absent,
    /// What stands there is no dictionary: it is damaged, of another kind, or out of bounds in size
    /// or depth.
    damaged,
    /// What stands there could not be told this time, for a reason of this process or of the disk:
    /// no descriptor or memory left, no permission, a failing disk, a file in the middle of a
    /// change. Nobody may take this for a file that says nothing.
    couldNot,
  };

  DictionaryReading(PropertyList::Dictionary content)
      : outcome(Outcome::read), dictionary(std::move(content)) {}
  DictionaryReading(Outcome why) : outcome(why) {}

  Outcome outcome;
  std::optional<PropertyList::Dictionary> dictionary;

  friend bool operator==(const DictionaryReading&, const DictionaryReading&) = default;
};

/// Property-list files of the device. Paths are absolute paths of the device.
class SENTREL_API PropertyListFiles {
 public:
  virtual ~PropertyListFiles() = default;

  /// What the file at `path` holds. Time and memory are bounded whatever that is, and no writer is
  /// waited for.
  virtual DictionaryReading readDictionary(const std::string& path) const = 0;

  /// Puts a file that holds `dictionary` in the place of the file at `path`. Other processes see
  /// either the old file or the new one, never a mixture, also after a crash or a full disk.
  /// Returns whether the new file stands; on false the old one is untouched.
  virtual bool writeDictionary(const std::string& path,
                               const PropertyList::Dictionary& dictionary) = 0;

  /// Keeps others from writing for as long as it lives. To be let go of on the thread that took it.
  class Lock {
   public:
    virtual ~Lock() = default;
  };

  /// For a change that begins with reading: until the lock goes, no other process or thread writes
  /// into the folder of the file at `path`. Whoever has one may write, and may take another. Null
  /// where somebody else keeps the lock for two seconds, or where there is no such folder.
  virtual std::unique_ptr<Lock> lock(const std::string& path) = 0;
};

}  // namespace sentrel
