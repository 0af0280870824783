#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// What a platform operation hands back about its failure.
struct PlatformError {
  std::string domain;
  std::int64_t code = 0;
  std::string localizedDescription;

  friend bool operator==(const PlatformError&, const PlatformError&) = default;
};

/// What a platform object raises when it is asked something it cannot cope with.
class SENTREL_API PlatformException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace sentrel
