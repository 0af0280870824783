#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"
#include "sentrel/platform/Xpc.h"

namespace sentrel {

/// Receives the answer to a watch query: the dictionary of what is known, empty where the daemon
/// could not be reached, and whatever else the daemon put in its place. Runs on the main queue.
using WatchReply = std::function<void(const PropertyList& answer)>;

}  // namespace sentrel

// The paired watch, asked and tapped from any process, and answered inside the sharing daemon.
// Asking and tapping: main thread, and the reply may be empty. Every function has C linkage so that
// a module which loads the library finds it by name.
extern "C" {

/// Sends `query` on a connection of its own. Without one, `reply` never runs.
SENTREL_API void sendSNWatchQueryWithReply(const sentrel::PropertyList::Dictionary& query,
                                           sentrel::WatchReply reply);

/// Asks for everything an unlock needs. The flag chooses the second signal value, where that one
/// stands for a strength and the first does not.
SENTREL_API void sendGeneralSNWatchQueryWithReply(bool preferSecondRSSI, sentrel::WatchReply reply);

/// Has the daemon only wake the watch.
SENTREL_API void sendInvalidateRSSISNWatchQueryWithReply(sentrel::WatchReply reply);

/// Answers a query inside the daemon, on the thread that delivers it; blocks on the agent's queue
/// while the watch is woken. The signal values are in dBm.
SENTREL_API void handleSNWatchEvent(const std::shared_ptr<sentrel::XpcMessage>& message,
                                    std::int64_t firstRSSI, std::int64_t secondRSSI);

/// Taps the wrist: mode 1 twice at once, mode 2 three times within half a second, any other once.
SENTREL_API void vibrateAppleWatch(std::int64_t mode);

}  // extern "C"
