#pragma once

#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// The maker's own library.
class SENTREL_API QVUtils {
 public:
  virtual ~QVUtils() = default;

  /// Whether the home screen hides the application.
  virtual bool isHiddenApp(const std::string& bundleIdentifier) const = 0;

  /// Whether this process can show alerts of the older kind.
  virtual bool canUseAlertView() const = 0;

  /// The device model, "iPhone10,3" say.
  virtual std::string platform() const = 0;
};

}  // namespace sentrel
