#include <exception>
#include <utility>

#include "device/bus/BusCodec.h"
#include "device/bus/BusLink.h"
#include "device/bus/BusProtocol.h"

namespace sentrel::bus {
namespace {

bool meansTaken(const sdbus::Error& error) {
  const auto& name = error.getName();
  return name == "System.Error.EEXIST" || name == "org.freedesktop.DBus.Error.FileExists";
}

}  // namespace

void BusConnection::Link::serve(const std::string& service, const std::string& channel,
                                MessageResponder responder) {
  std::lock_guard lock(mutex_);
  if (!bus_) throw BusError("cannot serve " + service + " on the bus: " + lossReason_);
  try {
    if (!services_.contains(service)) bus_->requestName(service);
  } catch (const sdbus::Error& error) {
    if (meansTaken(error))
      throw BusError("another process already has the name " + service + " on this bus");
    throw BusError("the bus does not give the name " + service + ": " + error.getMessage());
  }
  services_.insert(service);
  responders_.insert_or_assign(channel, std::move(responder));
  wakeLoop();
}

void BusConnection::Link::receiveQuestion(sdbus::MethodCall call) {
  try {
    std::string channel;
    std::string message;
    call >> channel >> message;
    auto userInfo = readUserInfo(call);
    if (!userInfo) {
      const sdbus::Error error(protocol::malformedError, "no user info within bounds");
      return call.createErrorReply(error).send();
    }
    const std::uint64_t number = questions_++;
    unanswered_.emplace(number, std::move(call));
    loop_->async([link = weak_from_this(), number, channel = std::move(channel),
                  message = std::move(message), userInfo = std::move(*userInfo)] {
      if (const auto alive = link.lock())
        alive->reply(number, alive->compute(channel, message, userInfo));
    });
  } catch (const std::exception&) {
    // The caller is gone, or its question is not even readable: nobody waits for an answer.
  }
}

/// The outer none: there is nothing to answer with.
std::optional<UserInfo> BusConnection::Link::compute(const std::string& channel,
                                                     const std::string& message,
                                                     const UserInfo& userInfo) noexcept {
  try {
    MessageResponder responder;
    {
      std::lock_guard lock(mutex_);
      const auto found = responders_.find(channel);
      if (found == responders_.end()) return std::nullopt;
      responder = found->second;
    }
    return responder(message, userInfo);
  } catch (...) {
    return std::nullopt;
  }
}

void BusConnection::Link::reply(std::uint64_t number, const std::optional<UserInfo>& computed) {
  std::lock_guard lock(mutex_);
  const auto call = unanswered_.extract(number);
  if (!call) return;  // the bus was lost meanwhile
  try {
    if (computed) {
      auto answer = call.mapped().createReply();
      if (appendUserInfo(answer, *computed)) return answer.send();
    }
    call.mapped().createErrorReply(sdbus::Error(protocol::failedError, "no answer")).send();
  } catch (const sdbus::Error& error) {
    note(error);
  }
}

}  // namespace sentrel::bus
