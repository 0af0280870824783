#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// Something that others attach values to, each under a key of their own.
class SENTREL_API AssociatedObjects {
 public:
  /// Keeps `value` under `key` for as long as this object lives; null removes it.
  void setAssociatedObject(const std::string& key, std::shared_ptr<void> value);
  /// Null where there is none. `T` is the type that the value was stored as.
  template <class T>
  std::shared_ptr<T> associatedObject(std::string_view key) const {
    const auto value = associated_.find(key);
    return value == associated_.end() ? nullptr : std::static_pointer_cast<T>(value->second);
  }

 protected:
  ~AssociatedObjects() = default;

 private:
  std::map<std::string, std::shared_ptr<void>, std::less<>> associated_;
};

}  // namespace sentrel
