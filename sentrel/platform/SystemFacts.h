#pragma once

#include <optional>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

enum class UIUserInterfaceStyle { unspecified, light, dark };

/// What the system says of itself.
class SENTREL_API SystemFacts {
 public:
  virtual ~SystemFacts() = default;

  /// "13.3.1", say.
  virtual std::string systemVersion() const = 0;

  /// The style of the main screen's traits; none where the traits know no style.
  virtual std::optional<UIUserInterfaceStyle> mainScreenInterfaceStyle() const = 0;
};

}  // namespace sentrel
