#pragma once

#include <optional>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// The control-centre toggle library.
class SENTREL_API FSSwitchPanel {
 public:
  virtual ~FSSwitchPanel() = default;

  /// The switch's name for people; none for an unknown switch.
  virtual std::optional<std::string> titleForSwitchIdentifier(
      const std::string& switchIdentifier) const = 0;
};

}  // namespace sentrel
