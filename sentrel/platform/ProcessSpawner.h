#pragma once

#include <string>
#include <vector>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// Starts programs.
class SENTREL_API ProcessSpawner {
 public:
  virtual ~ProcessSpawner() = default;

  /// Starts the program at `path` with exactly `arguments`, the first of which is its name, with no
  /// file actions, no attributes and an empty environment, and does not wait for it. Whether it
  /// started.
  virtual bool spawn(const std::string& path, const std::vector<std::string>& arguments) = 0;
};

}  // namespace sentrel
