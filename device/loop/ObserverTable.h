#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::loop {

/// The observers that one process has at one centre. May be used from any thread.
class ObserverTable {
 public:
  Observation add(const std::string& name, NotificationCenter::Observer observer);

  /// For everyone who observes the notification's name now, in the order in which they began to, a
  /// block that tells of it unless they have stopped by the time it runs.
  std::vector<std::function<void()>> tellersOf(Notification notification);

 private:
  struct Registration {
    std::string name;
    NotificationCenter::Observer observer;
  };

  std::mutex mutex_;
  std::vector<std::weak_ptr<Registration>> registrations_;
};

}  // namespace sentrel::loop
