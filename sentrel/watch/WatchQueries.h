#pragma once

#include <cstdint>

#include "sentrel/platform/Platform.h"
#include "sentrel/watch/WatchProtocol.h"

/// What the stated functions do for the current process, for whoever has a platform. Main thread.
namespace sentrel::watch {

/// As sendGeneralSNWatchQueryWithReply.
void askForUnlock(const Platform& platform, bool preferSecondRSSI, WatchReply reply);

/// As vibrateAppleWatch.
void vibrate(const Platform& platform, std::int64_t mode);

}  // namespace sentrel::watch
