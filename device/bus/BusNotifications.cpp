#include <exception>
#include <utility>

#include "device/bus/BusCodec.h"
#include "device/bus/BusLink.h"
#include "device/bus/BusProtocol.h"
#include "device/common/UserInfoLimits.h"

namespace sentrel::bus {

void BusConnection::Link::post(BusNotificationKind kind, const Notification& notification) {
  if (kind == BusNotificationKind::darwin)
    send(protocol::darwinSignal, {notification.name, std::nullopt});
  else
    send(protocol::distributedSignal, notification);
  wakeLoop();
}

void BusConnection::Link::send(const char* signal, const Notification& notification) {
  if (!isCarriableText(notification.name)) return;
  std::lock_guard lock(mutex_);
  if (!bus_) return;
  try {
    auto message = object_->createSignal(protocol::notificationsInterface, signal);
    message << notification.name;
    if (appendUserInfo(message, notification.userInfo)) message.send();
  } catch (const sdbus::Error& error) {
    note(error);
  }
}

Observation BusConnection::Link::addObserver(BusNotificationKind kind, const std::string& name,
                                             NotificationCenter::Observer observer) {
  subscribe();
  wakeLoop();
  return observers(kind).add(name, std::move(observer));
}

/// Only a process that observes something is woken by notifications.
void BusConnection::Link::subscribe() {
  std::lock_guard lock(mutex_);
  if (!bus_ || subscription_) return;
  try {
    const std::string rule =
        std::string("type='signal',interface='") + protocol::notificationsInterface + "'";
    subscription_ =
        bus_->addMatch(rule, [this](sdbus::Message& signal) { receiveNotification(signal); });
  } catch (const sdbus::Error& error) {
    note(error);
  }
}

void BusConnection::Link::receiveNotification(sdbus::Message& signal) {
  try {
    const std::string kind = signal.getMemberName();
    Notification notification;
    signal >> notification.name;
    auto userInfo = readUserInfo(signal);
    if (!userInfo) return;
    notification.userInfo = std::move(*userInfo);
    if (kind == protocol::darwinSignal)
      deliver(darwin_, {std::move(notification.name), std::nullopt});
    else if (kind == protocol::distributedSignal)
      deliver(distributed_, std::move(notification));
  } catch (const std::exception&) {
    // Not one of ours.
  }
}

void BusConnection::Link::deliver(loop::ObserverTable& observers, Notification notification) {
  for (auto& tell : observers.tellersOf(std::move(notification)))
    loop_->async(std::move(tell));
}

/// The bus handles what it gets in order, so its answer to a question of ours comes behind whatever
/// was posted before.
void BusConnection::Link::catchUp() {
  std::lock_guard lock(mutex_);
  if (!bus_) return;
  try {
    const auto daemon = sdbus::createProxy(*bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus");
    auto call = daemon->createMethodCall("org.freedesktop.DBus", "GetId");
    call.send(replyTimeout_);
    while (bus_ && bus_->processPendingRequest()) {
    }
  } catch (const sdbus::Error& error) {
    note(error);
  }
}

}  // namespace sentrel::bus
