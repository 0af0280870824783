#pragma once

#include <string_view>
#include <vector>

#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::host {

/// What the home-screen process does when another process posts that it should: lock the device,
/// take the biometric sensor, give it back, drop what is held of it.
///
/// Make it inside the home-screen process. It observes as long as it lives.
class SpringBoardObservers {
 public:
  SpringBoardObservers();

 private:
  std::vector<Observation> observations_;
};

}  // namespace sentrel::host
