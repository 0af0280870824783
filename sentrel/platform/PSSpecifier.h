#pragma once

#include <optional>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// One row of the settings application. Known by its identity too.
class SENTREL_API PSSpecifier {
 public:
  virtual ~PSSpecifier() = default;
  virtual std::optional<std::string> name() const = 0;
  virtual std::optional<std::string> identifier() const = 0;
};

}  // namespace sentrel
