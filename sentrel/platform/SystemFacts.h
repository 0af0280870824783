#pragma once

#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// What the system says of itself.
class SENTREL_API SystemFacts {
 public:
  virtual ~SystemFacts() = default;

  /// "13.3.1", say.
  virtual std::string systemVersion() const = 0;
};

}  // namespace sentrel
