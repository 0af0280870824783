#include "device/simulated/SimulatedMessages.h"

#include <utility>

#include "device/common/UserInfoLimits.h"

namespace sentrel::simulated {

void MessageHub::setResponder(const std::string& channel, std::weak_ptr<Process> process,
                              MessageResponder responder) {
  responders_.insert_or_assign(channel, Registration{std::move(process), std::move(responder)});
}

UserInfo MessageHub::send(const std::string& sender, const std::string& channel,
                          const std::string& message, const UserInfo& userInfo) {
  sent_.push_back({sender, message, userInfo});
  if (!isCarriable(userInfo) || !isCarriableText(channel) || !isCarriableText(message))
    return std::nullopt;
  const auto registration = responders_.find(channel);
  if (registration == responders_.end()) return std::nullopt;
  const auto process = registration->second.process.lock();
  if (!process) return std::nullopt;
  Process::Scope scope(*process);
  try {
    UserInfo reply = registration->second.responder(message, userInfo);
    return isCarriable(reply) ? std::move(reply) : std::nullopt;
  } catch (...) {
    return std::nullopt;  // what a responder throws ends in its own process
  }
}

}  // namespace sentrel::simulated
