#pragma once

#include <memory>
#include <string>
#include <utility>

#include "device/bus/BusConnection.h"
#include "sentrel/platform/MessageChannel.h"

namespace sentrel::bus {

/// Requests to the home-screen process over the bus.
class BusMessageChannel final : public MessageChannel {
 public:
  explicit BusMessageChannel(std::shared_ptr<BusConnection> connection)
      : connection_(std::move(connection)) {}

  UserInfo sendMessageAndReceiveReply(const std::string& channel, const std::string& message,
                                      const UserInfo& userInfo) override {
    return connection_->request(springBoardService, channel, message, userInfo);
  }

 private:
  std::shared_ptr<BusConnection> connection_;
};

}  // namespace sentrel::bus
