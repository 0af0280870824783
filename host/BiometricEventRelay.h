#pragma once

#include <memory>

#include "sentrel/platform/BiometricObserver.h"

namespace sentrel::host {

/// Posts every biometric event that the home screen's resource reports to the other processes, for
/// those of them that asked for the sensor. Where there is no resource, applications have their
/// events from the sensor itself.
///
/// Make it inside the home-screen process. It relays as long as it lives.
class BiometricEventRelay {
 public:
  BiometricEventRelay();

 private:
  std::shared_ptr<BiometricObserver> observer_;
};

}  // namespace sentrel::host
