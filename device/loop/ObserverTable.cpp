#include "device/loop/ObserverTable.h"

#include <utility>

namespace sentrel::loop {

Observation ObserverTable::add(const std::string& name, NotificationCenter::Observer observer) {
  auto registration = std::make_shared<Registration>(Registration{name, std::move(observer)});
  std::lock_guard lock(mutex_);
  std::erase_if(registrations_, [](const auto& entry) { return entry.expired(); });
  registrations_.push_back(registration);
  return registration;
}

std::vector<std::function<void()>> ObserverTable::tellersOf(Notification notification) {
  const auto told = std::make_shared<const Notification>(std::move(notification));
  std::vector<std::function<void()>> tellers;
  std::vector<std::shared_ptr<Registration>> alive;  // let go of outside the lock
  std::lock_guard lock(mutex_);
  for (const auto& entry : registrations_) {
    auto registration = entry.lock();
    if (!registration || registration->name != told->name) continue;
    tellers.push_back([entry, told] {
      if (const auto observed = entry.lock()) observed->observer(*told);
    });
    alive.push_back(std::move(registration));
  }
  return tellers;
}

}  // namespace sentrel::loop
