#include "device/simulated/SimulatedNotifications.h"

#include <algorithm>
#include <utility>

#include "device/common/UserInfoLimits.h"

namespace sentrel::simulated {

void NotificationHub::post(Notification notification) {
  std::erase_if(registrations_, [](const auto& entry) { return entry.expired(); });
  for (const auto& entry : registrations_) {
    const auto registration = entry.lock();
    const auto queue = registration->queue.lock();
    if (!queue || registration->name != notification.name) continue;
    queue->async([entry, notification] {
      if (const auto observed = entry.lock()) observed->observer(notification);
    });
  }
  posted_.push_back(std::move(notification));
}

Observation NotificationHub::addObserver(const std::string& name, std::weak_ptr<MainQueue> queue,
                                         NotificationCenter::Observer observer) {
  auto registration =
      std::make_shared<Registration>(Registration{name, std::move(queue), std::move(observer)});
  registrations_.push_back(registration);
  return registration;
}

void SimulatedNotificationCenter::post(Notification notification) {
  if (kind_ == Kind::darwin) notification.userInfo.reset();
  const bool arrives = isCarriableText(notification.name) && isCarriable(notification.userInfo);
  if (kind_ != Kind::local && !arrives) return;
  hub_->post(std::move(notification));
}

Observation SimulatedNotificationCenter::addObserver(const std::string& name, Observer observer) {
  return hub_->addObserver(name, queue_, std::move(observer));
}

}  // namespace sentrel::simulated
