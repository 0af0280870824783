#pragma once

#include <optional>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Screen.h"

namespace sentrel {

/// The current process's view of the screen. Without one it is 375 by 667 points at scale 2.
class SENTREL_API UIScreen {
 public:
  static UIScreen mainScreen() { return UIScreen(); }

  CGRect bounds() const;
  double scale() const;
  /// None where the running system knows no interface styles.
  std::optional<UIUserInterfaceStyle> userInterfaceStyle() const;

 private:
  UIScreen() = default;
};

}  // namespace sentrel
