#pragma once

#include <memory>
#include <string>
#include <vector>

#include "sentrel/platform/MainQueue.h"
#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::simulated {

/// Carries one kind of notification to whoever observes it, and remembers what was posted.
class NotificationHub {
 public:
  /// Puts it on the observers' queues.
  void post(Notification notification);
  /// Tells the observers before it returns.
  void postAtOnce(const Notification& notification);
  Observation addObserver(const std::string& name, std::weak_ptr<MainQueue> queue,
                          NotificationCenter::Observer observer);

  /// Everything posted so far, in order.
  const std::vector<Notification>& posted() const noexcept { return posted_; }

 private:
  struct Registration {
    std::string name;
    std::weak_ptr<MainQueue> queue;
    NotificationCenter::Observer observer;
  };

  std::vector<std::weak_ptr<Registration>> observersOf(const std::string& name);

  std::vector<std::weak_ptr<Registration>> registrations_;
  std::vector<Notification> posted_;
};

/// One process's end of a hub.
class SimulatedNotificationCenter final : public NotificationCenter {
 public:
  enum class Kind { darwin, distributed, local };

  SimulatedNotificationCenter(std::shared_ptr<NotificationHub> hub, std::weak_ptr<MainQueue> queue,
                              Kind kind)
      : hub_(std::move(hub)), queue_(std::move(queue)), kind_(kind) {}

  void post(Notification notification) override;
  Observation addObserver(const std::string& name, Observer observer) override;

 private:
  std::shared_ptr<NotificationHub> hub_;
  std::weak_ptr<MainQueue> queue_;
  Kind kind_;
};

}  // namespace sentrel::simulated
