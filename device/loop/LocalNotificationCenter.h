#pragma once

#include <string>
#include <utility>

#include "device/loop/ObserverTable.h"
#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::loop {

/// The centre of this process alone: no bus has part in it, and no queue.
class LocalNotificationCenter final : public NotificationCenter {
 public:
  void post(Notification notification) override {
    for (const auto& tell : observers_.tellersOf(std::move(notification)))
      tell();
  }

  Observation addObserver(const std::string& name, Observer observer) override {
    return observers_.add(name, std::move(observer));
  }

 private:
  ObserverTable observers_;
};

}  // namespace sentrel::loop
