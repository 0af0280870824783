#pragma once

#include <optional>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Screen.h"

namespace sentrel {

/// The current process's view of the device.
class SENTREL_API UIDevice {
 public:
  static UIDevice currentDevice() { return UIDevice(); }

  /// None where the device cannot be asked.
  std::optional<UIUserInterfaceIdiom> userInterfaceIdiom() const;

 private:
  UIDevice() = default;
};

}  // namespace sentrel
