#pragma once

#include <memory>
#include <string>
#include <utility>

#include "device/bus/BusConnection.h"
#include "sentrel/platform/NotificationCenter.h"

namespace sentrel::bus {

/// A Darwin or a distributed centre over the bus.
class BusNotificationCenter final : public NotificationCenter {
 public:
  BusNotificationCenter(std::shared_ptr<BusConnection> connection, BusNotificationKind kind)
      : connection_(std::move(connection)), kind_(kind) {}

  void post(Notification notification) override { connection_->post(kind_, notification); }

  Observation addObserver(const std::string& name, Observer observer) override {
    return connection_->addObserver(kind_, name, std::move(observer));
  }

 private:
  std::shared_ptr<BusConnection> connection_;
  BusNotificationKind kind_;
};

}  // namespace sentrel::bus
