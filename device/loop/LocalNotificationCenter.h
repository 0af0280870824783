#pragma once

#include <memory>
#include <string>
#include <utility>

#include "device/loop/ObserverTable.h"
#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::loop {

/// The centre of this process alone: no bus has part in it.
class LocalNotificationCenter final : public NotificationCenter {
 public:
  explicit LocalNotificationCenter(std::shared_ptr<MainQueue> queue)
      : observers_(std::move(queue)) {}

  void post(Notification notification) override { observers_.deliver(std::move(notification)); }

  Observation addObserver(const std::string& name, Observer observer) override {
    return observers_.add(name, std::move(observer));
  }

 private:
  ObserverTable observers_;
};

}  // namespace sentrel::loop
