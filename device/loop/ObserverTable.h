#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "sentrel/platform/MainQueue.h"
#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::loop {

/// The observers that one process has at one centre. May be used from any thread.
class ObserverTable {
 public:
  explicit ObserverTable(std::shared_ptr<MainQueue> queue) : queue_(std::move(queue)) {}

  Observation add(const std::string& name, NotificationCenter::Observer observer);

  /// Queues the notification for everyone who observes its name now and still does when the queue
  /// comes to it.
  void deliver(Notification notification);

 private:
  struct Registration {
    std::string name;
    NotificationCenter::Observer observer;
  };

  std::shared_ptr<MainQueue> queue_;
  std::mutex mutex_;
  std::vector<std::weak_ptr<Registration>> registrations_;
};

}  // namespace sentrel::loop
