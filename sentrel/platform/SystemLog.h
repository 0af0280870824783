#pragma once

#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// The system's own log, for the few lines that do not go the usual way.
class SENTREL_API SystemLog {
 public:
  virtual ~SystemLog() = default;

  virtual void write(const std::string& line) = 0;
};

}  // namespace sentrel
