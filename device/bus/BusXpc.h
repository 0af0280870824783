#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "device/bus/BusConnection.h"
#include "sentrel/platform/Xpc.h"

namespace sentrel::bus {

/// Connections to the services of other processes over the bus; none can be made without a bus. A
/// service that is absent, dies, hangs or answers with anything but a dictionary replies none. The
/// bus belongs to one user, so it knows no privileges.
class BusXpc final : public Xpc {
 public:
  explicit BusXpc(std::shared_ptr<BusConnection> connection) : connection_(std::move(connection)) {}

  std::shared_ptr<XpcConnection> createMachServiceConnection(
      const std::string& serviceName) override;
  std::shared_ptr<NanoAudioControlConnection> connectToAudioControl(const std::string& serviceName,
                                                                    std::uint64_t options) override;

 private:
  std::shared_ptr<BusConnection> connection_;
};

/// Serves a mach service: `handler` runs on the main queue, and replies to the message there, now
/// or later, or lets go of it. Throws BusError like BusConnection::serve.
void serveMachService(BusConnection& connection, const std::string& serviceName,
                      std::function<void(const std::shared_ptr<XpcMessage>&)> handler);

/// Likewise an audio control, whose every call is `tap` with an intensity from 0 to 1.
void serveAudioControl(BusConnection& connection, const std::string& serviceName,
                       std::function<void(double intensity)> tap);

}  // namespace sentrel::bus
