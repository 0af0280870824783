#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sentrel/bridge/TextFormat.h"
#include "sentrel/platform/MessageChannel.h"

namespace sentrel {

/// The bridge to the device and to the other processes: class operations only, all on behalf of
/// the current Process. Each query computes its answer where that is visible, and otherwise asks
/// the home-screen process; a missing reply reads as NO or none.
class SENTREL_API SNUtils {
 public:
  SNUtils() = delete;

  /// Whether this process is the home screen's.
  static bool isSpringBoard();

  /// `key` in the current language of the process's main bundle, `key` itself where it has none.
  static std::string_view localizedString(std::string_view key);

  /// Sends a named request to the home-screen process and waits for the reply, for a bounded time.
  static UserInfo sendMessageToSpringBoardAndReceiveReplyName(std::string_view name,
                                                              const UserInfo& userInfo);

  /// Posts a notification without payload to every process.
  static void postDarwinNotification(std::string_view name);

  /// Posts a notification to every process, with a copy of `params` as its payload.
  static void postCFDistributedNotification(std::string_view name, const UserInfo& params);

  /// The one entry point for log lines. Silent unless logging is switched on; an application then
  /// sends the line to the home-screen process. The home-screen process itself writes nothing.
  template <class... Arguments>
  static void logMessage(std::string_view format, const Arguments&... arguments) {
    if (isLoggingEnabled()) sendLogLine(formatText(format, {TextArgument(arguments)...}));
  }

 private:
  static bool isLoggingEnabled();
  static void sendLogLine(const std::string& message);
};

}  // namespace sentrel
