#pragma once

#include <optional>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"

namespace sentrel {

enum class UIUserInterfaceIdiom { phone = 0, pad = 1 };
enum class UIUserInterfaceStyle { light = 1, dark = 2 };

/// The device's screen and what the device says of its looks. The answers may change while a
/// process runs.
class SENTREL_API Screen {
 public:
  virtual ~Screen() = default;

  /// Points, in the present orientation.
  virtual CGRect bounds() const = 0;

  /// Pixels a point.
  virtual double scale() const = 0;

  /// None where the device cannot be asked.
  virtual std::optional<UIUserInterfaceIdiom> userInterfaceIdiom() const = 0;

  /// None where the running system knows no interface styles.
  virtual std::optional<UIUserInterfaceStyle> userInterfaceStyle() const = 0;
};

}  // namespace sentrel
