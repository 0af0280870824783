#pragma once

#include <stdexcept>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Platform.h"

namespace sentrel {

/// A platform lacks ports that nothing can stand in for. The text names each of them, and what it
/// is for.
class SENTREL_API IncompletePlatform : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

/// `platform` with every port that a Process needs. What is null and can do nothing without opening
/// anything or holding anybody up is filled in: no network is joined, no sensor is there for the
/// owner, no service answers, no library opens, no program starts, no sound plays, log lines are
/// lost, and work beside the main queue runs on it. In the home-screen process nobody answers
/// messages.
///
/// Throws IncompletePlatform where another port is missing. Classes that a running system may lack
/// stay as they are.
SENTREL_API Platform checkedPlatform(Platform platform);

}  // namespace sentrel
