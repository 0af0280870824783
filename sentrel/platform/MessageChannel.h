#pragma once

#include <functional>
#include <optional>
#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// A request's or a reply's content; none is not the same as empty.
using UserInfo = std::optional<PropertyList::Dictionary>;

/// What answers the named messages of a channel in the home-screen process.
using MessageResponder = std::function<UserInfo(const std::string& message, const UserInfo&)>;

/// The synchronous way to ask the home-screen process.
class SENTREL_API MessageChannel {
 public:
  virtual ~MessageChannel() = default;

  /// Delivers `message` to the responder registered for `channel` and waits for its reply, for a
  /// bounded time. None when there is no responder, when it dies or does not answer in time, and
  /// when what comes back is no dictionary. May be called from any thread.
  virtual UserInfo sendMessageAndReceiveReply(const std::string& channel,
                                              const std::string& message,
                                              const UserInfo& userInfo) = 0;
};

}  // namespace sentrel
