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
                                AsyncResponder responder) {
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
  std::swap(responders_[channel], responder);  // the former one goes when the mutex is free
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
      const auto alive = link.lock();
      if (!alive) return;
      alive->respond(channel, message, userInfo, [link, number](const auto& answer) {
        if (const auto asked = link.lock()) asked->reply(number, answer);
      });
    });
  } catch (const std::exception&) {
    // The caller is gone, or its question is not even readable: nobody waits for an answer.
  }
}

void BusConnection::Link::respond(const std::string& channel, const std::string& message,
                                  const UserInfo& userInfo, const Answer& answer) noexcept {
  AsyncResponder responder;
  {
    std::lock_guard lock(mutex_);
    const auto found = responders_.find(channel);
    if (found != responders_.end()) responder = found->second;
  }
  if (!responder) return answer(std::nullopt);
  try {
    responder(message, userInfo, answer);
  } catch (...) {
    // Whether it has answered is its own affair.
  }
}

void BusConnection::Link::reply(std::uint64_t number, const std::optional<UserInfo>& answer) {
  std::lock_guard lock(mutex_);
  const auto call = unanswered_.extract(number);
  if (!call) return;  // the bus was lost meanwhile
  try {
    if (answer) {
      auto message = call.mapped().createReply();
      if (appendUserInfo(message, *answer)) return message.send();
    }
    call.mapped().createErrorReply(sdbus::Error(protocol::failedError, "no answer")).send();
  } catch (const sdbus::Error& error) {
    note(error);
  }
}

}  // namespace sentrel::bus
