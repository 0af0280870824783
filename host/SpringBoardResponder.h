#pragma once

#include <functional>
#include <map>
#include <string>

#include "sentrel/platform/MessageChannel.h"

namespace sentrel::host {

/// Answers the requests that other processes send to the home-screen process, each with what the
/// library computes for the same question there. Unknown and malformed requests get no answer or
/// the answer for nothing asked; none of them can fail.
///
/// Call it inside the home-screen process, on its main thread. Copies answer alike.
class SpringBoardResponder {
 public:
  /// Receives the log lines of every process: the library itself writes no log.
  using LogSink = std::function<void(const std::string& line)>;

  explicit SpringBoardResponder(LogSink logSink);

  /// The name of the channel on which the library asks.
  static std::string channel();

  UserInfo operator()(const std::string& message, const UserInfo& userInfo) const;

 private:
  using Answer = std::function<UserInfo(const UserInfo&)>;

  std::map<std::string, Answer, std::less<>> answers_;
};

}  // namespace sentrel::host
