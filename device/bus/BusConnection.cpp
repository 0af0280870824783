#include "device/bus/BusConnection.h"

#include <utility>

#include "device/bus/BusLink.h"

namespace sentrel::bus {
namespace {

std::optional<UserInfo> answerOf(const MessageResponder& responder, const std::string& message,
                                 const UserInfo& userInfo) noexcept {
  try {
    return responder(message, userInfo);
  } catch (...) {
    return std::nullopt;
  }
}

}  // namespace

BusConnection::BusConnection(const std::shared_ptr<loop::RunLoop>& loop, Options options)
    : link_(std::make_shared<Link>(loop, std::move(options))) {
  link_->connect();
  loop->add(link_);
}

BusConnection::~BusConnection() = default;

bool BusConnection::isConnected() const {
  return link_->isConnected();
}

void BusConnection::serve(const std::string& service, const std::string& channel,
                          MessageResponder responder) {
  serveAsync(service, channel,
             [responder = std::move(responder)](const std::string& message,
                                                const UserInfo& userInfo, const Answer& answer) {
               answer(answerOf(responder, message, userInfo));
             });
}

void BusConnection::serveAsync(const std::string& service, const std::string& channel,
                               AsyncResponder responder) {
  link_->serve(service, channel, std::move(responder));
}

UserInfo BusConnection::request(const std::string& service, const std::string& channel,
                                const std::string& message, const UserInfo& userInfo) {
  return link_->request(service, channel, message, userInfo);
}

void BusConnection::requestAsync(const std::string& service, const std::string& channel,
                                 const std::string& message, const UserInfo& userInfo,
                                 ReplyHandler reply) {
  link_->requestAsync(service, channel, message, userInfo, std::move(reply));
}

void BusConnection::post(BusNotificationKind kind, const Notification& notification) {
  link_->post(kind, notification);
}

Observation BusConnection::addObserver(BusNotificationKind kind, const std::string& name,
                                       NotificationCenter::Observer observer) {
  return link_->addObserver(kind, name, std::move(observer));
}

void BusConnection::catchUp() {
  link_->catchUp();
}

}  // namespace sentrel::bus
