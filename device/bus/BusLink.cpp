#include "device/bus/BusLink.h"

#include <algorithm>
#include <utility>

#include "device/bus/BusProtocol.h"

namespace sentrel::bus {
namespace {

std::uint64_t microseconds(Seconds time) {
  constexpr Seconds shortest{1e-6};  // 0 would mean the default of the engine
  constexpr Seconds longest{1e6};
  const Seconds bounded = time > shortest ? std::min(time, longest) : shortest;
  return static_cast<std::uint64_t>(bounded.count() * 1e6);
}

bool meansLoss(const sdbus::Error& error) {
  const auto& name = error.getName();
  return name == "System.Error.ENOTCONN" || name == "System.Error.ECONNRESET" ||
         name == "System.Error.EPIPE";
}

}  // namespace

BusConnection::Link::Link(std::shared_ptr<loop::RunLoop> loop, Options options)
    : loop_(std::move(loop)),
      options_(std::move(options)),
      replyTimeout_(microseconds(options_.replyTimeout)) {}

void BusConnection::Link::connect() {
  std::lock_guard lock(mutex_);
  if (!options_.address) return lose("there is no bus");
  try {
    bus_ = sdbus::createSessionBusConnectionWithAddress(*options_.address);
    bus_->setMethodCallTimeout(replyTimeout_);
    object_ = sdbus::createObject(*bus_, protocol::objectPath);
    object_->registerMethod(protocol::messagesInterface, protocol::askMethod,
                            protocol::askSignature, protocol::answerSignature,
                            [this](sdbus::MethodCall call) { receiveQuestion(std::move(call)); });
    object_->finishRegistration();
  } catch (const sdbus::Error& error) {
    lose(error.getMessage());
  }
}

bool BusConnection::Link::isConnected() {
  std::lock_guard lock(mutex_);
  return bus_ != nullptr;
}

loop::RunLoop::Source::Wish BusConnection::Link::prepare() {
  std::lock_guard lock(mutex_);
  if (!bus_) return {};
  try {
    const auto data = bus_->getEventLoopPollData();
    Wish wish{data.fd, data.events, std::nullopt};
    if (const auto timeout = data.getRelativeTimeout()) wish.timeout = *timeout;
    return wish;
  } catch (const sdbus::Error& error) {
    lose(error.getMessage());
    return {};
  }
}

void BusConnection::Link::dispatch() {
  std::lock_guard lock(mutex_);
  if (!bus_) return;
  try {
    bus_->processPendingRequest();
  } catch (const sdbus::Error& error) {
    lose(error.getMessage());
  }
}

/// After another thread has used the bus, something may have come in that the loop's wait does not
/// see, or be left to go out.
void BusConnection::Link::wakeLoop() {
  if (!isLoopThread()) loop_->wake();
}

void BusConnection::Link::note(const sdbus::Error& error) {
  if (meansLoss(error)) lose(error.getMessage());
}

void BusConnection::Link::lose(const std::string& reason) {
  if (!lossReason_.empty()) return;
  lossReason_ = reason.empty() ? "the bus is gone" : reason;
  unanswered_.clear();
  subscription_.reset();
  proxies_.clear();
  object_.reset();
  bus_.reset();
  while (!waiting_.empty())
    endWait(waiting_.begin()->first, std::nullopt);
  if (!options_.onLost) return;
  loop_->async([report = std::move(options_.onLost), text = lossReason_] { report(text); });
}

}  // namespace sentrel::bus
