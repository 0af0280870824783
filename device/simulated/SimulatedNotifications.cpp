#include "device/simulated/SimulatedNotifications.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "device/common/UserInfoLimits.h"

namespace sentrel::simulated {

std::vector<std::weak_ptr<NotificationHub::Registration>> NotificationHub::observersOf(
    const std::string& name) {
  std::erase_if(registrations_, [](const auto& entry) { return entry.expired(); });
  std::vector<std::weak_ptr<Registration>> found;
  std::ranges::copy_if(registrations_, std::back_inserter(found),
                       [&name](const auto& entry) { return entry.lock()->name == name; });
  return found;
}

void NotificationHub::post(Notification notification) {
  for (const auto& entry : observersOf(notification.name))
    if (const auto queue = entry.lock()->queue.lock())
      queue->async([entry, notification] {
        if (const auto observed = entry.lock()) observed->observer(notification);
      });
  posted_.push_back(std::move(notification));
}

void NotificationHub::postAtOnce(const Notification& notification) {
  posted_.push_back(notification);
  for (const auto& entry : observersOf(notification.name))
    if (const auto observed = entry.lock()) observed->observer(notification);
}

Observation NotificationHub::addObserver(const std::string& name, std::weak_ptr<MainQueue> queue,
                                         NotificationCenter::Observer observer) {
  auto registration =
      std::make_shared<Registration>(Registration{name, std::move(queue), std::move(observer)});
  registrations_.push_back(registration);
  return registration;
}

void SimulatedNotificationCenter::post(Notification notification) {
  if (kind_ == Kind::local) return hub_->postAtOnce(notification);
  if (kind_ == Kind::darwin) notification.userInfo.reset();
  const bool arrives = isCarriableText(notification.name) && isCarriable(notification.userInfo);
  if (arrives) hub_->post(std::move(notification));
}

Observation SimulatedNotificationCenter::addObserver(const std::string& name, Observer observer) {
  return hub_->addObserver(name, queue_, std::move(observer));
}

}  // namespace sentrel::simulated
