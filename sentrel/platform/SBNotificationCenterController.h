#pragma once

#include "sentrel/platform/Export.h"

namespace sentrel {

/// The home screen's own controller of the notification centre. Main thread only.
class SENTREL_API SBNotificationCenterController {
 public:
  virtual ~SBNotificationCenterController() = default;

  /// Whether the notification centre lies over the screen now.
  virtual bool isVisible() const = 0;
};

}  // namespace sentrel
