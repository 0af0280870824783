#pragma once

#include <functional>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// The manager of the lock screen. Systems differ in what it answers, so any operation may be
/// missing.
class SENTREL_API SBLockScreenManager {
 public:
  virtual ~SBLockScreenManager() = default;

  std::function<bool()> isUILocked;
  /// _relockUIForButtonPress:afterCall:, and the name it has elsewhere.
  std::function<void(bool buttonPress, bool afterCall)> _relockUIForButtonPress;
  std::function<void(bool buttonlikeSource, bool afterCall)> _relockUIForButtonlikeSource;
  /// lockUIFromSource:withOptions:, with no options.
  std::function<void(int source)> lockUIFromSource;
  /// homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown:
  std::function<void(bool shown)> homeButtonShowPasscodeRecognizerRequestsPasscodeUIToBeShown;
};

}  // namespace sentrel
