#include "device/simulated/SimulatedDevice.h"

namespace sentrel::simulated {

SimulatedDevice::SimulatedDevice()
    : timeline_(std::make_shared<VirtualTimeline>()),
      files_(std::make_shared<SimulatedFiles>()),
      darwin_(std::make_shared<NotificationHub>()),
      distributed_(std::make_shared<NotificationHub>()),
      messages_(std::make_shared<MessageHub>()),
      wifi_(std::make_shared<WiFiState>()) {}

std::unique_ptr<SimulatedProcess> SimulatedDevice::launch(const std::string& bundleIdentifier) {
  return std::make_unique<SimulatedProcess>(*this, bundleIdentifier);
}

}  // namespace sentrel::simulated
