#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>

#include "sentrel/platform/FileSystem.h"
#include "sentrel/platform/PropertyListFiles.h"

namespace sentrel::simulated {

/// The files of a simulated device, in memory, shared by all its processes. What a process writes
/// is refused, and keeps whole seconds of dates, where a real property-list file does so; what is
/// put here stands as it is.
class SimulatedFiles final : public FileSystem, public PropertyListFiles {
 public:
  /// A file of which only the existence matters.
  void touch(const std::string& path) { plain_.insert(path); }

  void put(const std::string& path, PropertyList::Dictionary dictionary) {
    dictionaries_.insert_or_assign(path, std::move(dictionary));
  }

  void remove(const std::string& path) {
    plain_.erase(path);
    dictionaries_.erase(path);
  }

  /// While set, every write fails, as on a full disk.
  void setWritesFail(bool value) noexcept { writesFail_ = value; }

  /// While set, nobody can tell what any property-list file holds, as on a failing disk.
  void setReadsFail(bool value) noexcept { readsFail_ = value; }

  /// While set, another writer keeps the lock.
  void setLocked(bool value) noexcept { isLocked_ = value; }

  int writeCount() const noexcept { return writeCount_; }

  bool fileExists(const std::string& path) const override {
    return plain_.contains(path) || dictionaries_.contains(path);
  }

  DictionaryReading readDictionary(const std::string& path) const override {
    if (readsFail_) return DictionaryReading::Outcome::couldNot;
    const auto file = dictionaries_.find(path);
    if (file == dictionaries_.end())
      return plain_.contains(path) ? DictionaryReading::Outcome::damaged
                                   : DictionaryReading::Outcome::absent;
    return file->second;
  }

  bool writeDictionary(const std::string& path,
                       const PropertyList::Dictionary& dictionary) override;

  std::unique_ptr<Lock> lock(const std::string&) override {
    return isLocked_ ? nullptr : std::make_unique<Lock>();
  }

 private:
  std::set<std::string> plain_;
  std::map<std::string, PropertyList::Dictionary> dictionaries_;
  bool writesFail_ = false;
  bool readsFail_ = false;
  bool isLocked_ = false;
  int writeCount_ = 0;
};

}  // namespace sentrel::simulated
