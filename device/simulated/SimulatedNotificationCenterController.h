#pragma once

#include "sentrel/platform/SBNotificationCenterController.h"

namespace sentrel::simulated {

/// A notification centre that a test slides over the screen and back.
class SimulatedNotificationCenterController final : public SBNotificationCenterController {
 public:
  void setVisible(bool visible) noexcept { visible_ = visible; }
  bool isVisible() const override { return visible_; }

 private:
  bool visible_ = false;
};

}  // namespace sentrel::simulated
