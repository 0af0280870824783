#include "device/bus/ServiceWatch.h"

#include <sdbus-c++/sdbus-c++.h>

#include <utility>

namespace sentrel::bus {
namespace {

constexpr const char* daemonName = "org.freedesktop.DBus";

bool hasOwner(sdbus::IConnection& bus, const std::string& service) {
  const auto daemon = sdbus::createProxy(bus, daemonName, "/org/freedesktop/DBus");
  auto call = daemon->createMethodCall(daemonName, "NameHasOwner");
  call << service;
  auto reply = call.send(0);
  bool isOwned = false;
  reply >> isOwned;
  return isOwned;
}

}  // namespace

class ServiceWatch::Link final : public loop::RunLoop::Source,
                                 public std::enable_shared_from_this<Link> {
 public:
  Link(loop::RunLoop& loop, std::function<void()> onGone)
      : loop_(loop), onGone_(std::move(onGone)) {}

  void connect(const std::string& address, const std::string& service) {
    try {
      bus_ = sdbus::createSessionBusConnectionWithAddress(address);
      // Before the question: who goes in between is missed by neither.
      change_ = bus_->addMatch(std::string("type='signal',sender='") + daemonName +
                                   "',member='NameOwnerChanged',arg0='" + service + "'",
                               [this](sdbus::Message&) { tell(); });
      if (!hasOwner(*bus_, service)) tell();
    } catch (const sdbus::Error&) {
      tell();
    }
  }

  Wish prepare() override {
    if (isTold_) return {};
    try {
      const auto data = bus_->getEventLoopPollData();
      Wish wish{data.fd, data.events, std::nullopt};
      if (const auto timeout = data.getRelativeTimeout()) wish.timeout = *timeout;
      return wish;
    } catch (const sdbus::Error&) {
      tell();
      return {};
    }
  }

  void dispatch() override {
    try {
      bus_->processPendingRequest();
    } catch (const sdbus::Error&) {
      tell();
    }
  }

 private:
  void tell() {
    if (std::exchange(isTold_, true)) return;
    loop_.async([weak = weak_from_this()] {
      if (const auto self = weak.lock()) self->onGone_();
    });
  }

  loop::RunLoop& loop_;
  const std::function<void()> onGone_;
  bool isTold_ = false;

  // What hangs on the bus goes before it.
  std::unique_ptr<sdbus::IConnection> bus_;
  sdbus::Slot change_;
};

ServiceWatch::ServiceWatch(loop::RunLoop& loop, const std::string& address,
                           const std::string& service, std::function<void()> onGone)
    : link_(std::make_shared<Link>(loop, std::move(onGone))) {
  link_->connect(address, service);
  loop.add(link_);
}

ServiceWatch::~ServiceWatch() = default;

}  // namespace sentrel::bus
