#pragma once

#include <memory>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// A library that is open; it is closed with its last owner.
class SENTREL_API DynamicLibrary {
 public:
  virtual ~DynamicLibrary() = default;

  /// The address under `name`, or null. The caller knows what stands there; it is good as long as
  /// the library is open.
  virtual void* symbol(const std::string& name) const = 0;
};

/// Optional libraries of the system, looked up while running.
class SENTREL_API DynamicLibraries {
 public:
  /// When the symbols of a library are bound: as they are used, or all at once.
  enum class Binding { lazy, now };

  virtual ~DynamicLibraries() = default;

  /// Null where it cannot be opened.
  virtual std::shared_ptr<DynamicLibrary> open(const std::string& path, Binding binding) = 0;

  /// Whether a bundle stands at `path`, be it loadable or not.
  virtual bool canOpenBundle(const std::string& path) const = 0;

  /// Loads the bundle at `path` for good, which may make classes appear in the Platform. Whether it
  /// is loaded now.
  virtual bool loadBundle(const std::string& path) = 0;
};

}  // namespace sentrel
