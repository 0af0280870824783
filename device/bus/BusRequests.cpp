#include <chrono>
#include <future>
#include <utility>

#include "device/bus/BusCodec.h"
#include "device/bus/BusLink.h"
#include "device/bus/BusProtocol.h"
#include "device/common/UserInfoLimits.h"

namespace sentrel::bus {

UserInfo BusConnection::Link::request(const std::string& service, const std::string& channel,
                                      const std::string& message, const UserInfo& userInfo) {
  if (servesHere(service)) return askHere(channel, message, userInfo);
  UserInfo answer = ask(service, channel, message, userInfo);
  wakeLoop();
  return answer;
}

bool BusConnection::Link::servesHere(const std::string& service) {
  std::lock_guard lock(mutex_);
  return bus_ && services_.contains(service);
}

/// The bus would refuse to carry a question from a connection to itself.
UserInfo BusConnection::Link::askHere(const std::string& channel, const std::string& message,
                                      const UserInfo& userInfo) {
  if (isLoopThread()) {
    const auto answered = std::make_shared<UserInfo>();
    respond(channel, message, userInfo,
            [answered](const auto& answer) { *answered = answer.value_or(std::nullopt); });
    return *answered;
  }
  const auto answered = std::make_shared<std::promise<UserInfo>>();
  auto future = answered->get_future();
  askHereAsync(channel, message, userInfo,
               [answered](const UserInfo& answer) { answered->set_value(answer); });
  const auto wait = std::chrono::microseconds(replyTimeout_);
  return future.wait_for(wait) == std::future_status::ready ? future.get() : std::nullopt;
}

/// The time-out is for a responder that keeps its asker waiting.
void BusConnection::Link::askHereAsync(const std::string& channel, const std::string& message,
                                       const UserInfo& userInfo, ReplyHandler reply) {
  const std::uint64_t number = startWait(std::move(reply));
  const auto end = [link = weak_from_this(), number](const UserInfo& answer) {
    if (const auto alive = link.lock()) alive->hear(number, answer);
  };
  loop_->async([link = weak_from_this(), end, channel, message, userInfo] {
    if (const auto alive = link.lock())
      alive->respond(channel, message, userInfo,
                     [end](const auto& answer) { end(answer.value_or(std::nullopt)); });
  });
  loop_->after(Seconds(std::chrono::microseconds(replyTimeout_)), [end] { end(std::nullopt); });
}

UserInfo BusConnection::Link::ask(const std::string& service, const std::string& channel,
                                  const std::string& message, const UserInfo& userInfo) {
  std::lock_guard lock(mutex_);
  if (!bus_) return std::nullopt;
  try {
    auto call = makeQuestion(service, channel, message, userInfo);
    if (!call) return std::nullopt;
    auto answer = call->send(replyTimeout_);
    return readUserInfo(answer).value_or(std::nullopt);
  } catch (const sdbus::Error& error) {
    note(error);
    return std::nullopt;
  }
}

sdbus::IProxy& BusConnection::Link::proxyTo(const std::string& service) {
  auto& proxy = proxies_[service];
  if (!proxy) proxy = sdbus::createProxy(*bus_, service, protocol::objectPath);
  return *proxy;
}

/// None where it cannot be sent as it is.
std::optional<sdbus::MethodCall> BusConnection::Link::makeQuestion(const std::string& service,
                                                                   const std::string& channel,
                                                                   const std::string& message,
                                                                   const UserInfo& userInfo) {
  static const std::string interface = protocol::messagesInterface;
  static const std::string method = protocol::askMethod;
  if (!isCarriableText(channel) || !isCarriableText(message)) return std::nullopt;
  auto call = proxyTo(service).createMethodCall(interface, method);
  call << channel << message;
  if (!appendUserInfo(call, userInfo)) return std::nullopt;
  return call;
}

void BusConnection::Link::requestAsync(const std::string& service, const std::string& channel,
                                       const std::string& message, const UserInfo& userInfo,
                                       ReplyHandler reply) {
  if (servesHere(service)) return askHereAsync(channel, message, userInfo, std::move(reply));
  askAsync(service, channel, message, userInfo, std::move(reply));
  wakeLoop();
}

void BusConnection::Link::askAsync(const std::string& service, const std::string& channel,
                                   const std::string& message, const UserInfo& userInfo,
                                   ReplyHandler reply) {
  const std::uint64_t number = startWait(std::move(reply));
  std::lock_guard lock(mutex_);
  if (!bus_) return endWait(number, std::nullopt);
  try {
    const auto call = makeQuestion(service, channel, message, userInfo);
    if (!call) return endWait(number, std::nullopt);
    // What comes of it is heard inside dispatch(), under the mutex.
    const auto hear = [this, number](sdbus::MethodReply& answer, const sdbus::Error* error) {
      endWait(number, error ? std::nullopt : readUserInfo(answer).value_or(std::nullopt));
    };
    proxyTo(service).callMethod(*call, hear, replyTimeout_);
  } catch (const sdbus::Error& error) {
    note(error);
    endWait(number, std::nullopt);
  }
}

std::uint64_t BusConnection::Link::startWait(ReplyHandler reply) {
  std::lock_guard lock(mutex_);
  waiting_.emplace(asked_, std::move(reply));
  return asked_++;
}

void BusConnection::Link::hear(std::uint64_t number, const UserInfo& answer) {
  std::lock_guard lock(mutex_);
  endWait(number, answer);
}

/// Under the mutex.
void BusConnection::Link::endWait(std::uint64_t number, UserInfo answer) {
  auto waiting = waiting_.extract(number);
  if (!waiting) return;
  loop_->async(
      [reply = std::move(waiting.mapped()), answer = std::move(answer)] { reply(answer); });
}

}  // namespace sentrel::bus
