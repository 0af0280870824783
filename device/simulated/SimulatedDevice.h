#pragma once

#include <memory>
#include <string>

#include "device/simulated/SimulatedFiles.h"
#include "device/simulated/SimulatedMessages.h"
#include "device/simulated/SimulatedNotifications.h"
#include "device/simulated/SimulatedProcess.h"
#include "device/simulated/VirtualTimeline.h"

namespace sentrel::simulated {

/// A whole device in memory, on virtual time, with any number of processes. Its parts are values
/// with setters, and remember what was asked of them. One thread only.
class SimulatedDevice {
 public:
  SimulatedDevice();

  /// Starts a process. The device outlives it.
  std::unique_ptr<SimulatedProcess> launch(const std::string& bundleIdentifier);

  VirtualTimeline& time() noexcept { return *timeline_; }
  SimulatedFiles& files() noexcept { return *files_; }
  NotificationHub& darwin() noexcept { return *darwin_; }
  NotificationHub& distributed() noexcept { return *distributed_; }
  MessageHub& messages() noexcept { return *messages_; }
  WiFiState& wifi() noexcept { return *wifi_; }

 private:
  friend class SimulatedProcess;

  std::shared_ptr<VirtualTimeline> timeline_;
  std::shared_ptr<SimulatedFiles> files_;
  std::shared_ptr<NotificationHub> darwin_;
  std::shared_ptr<NotificationHub> distributed_;
  std::shared_ptr<MessageHub> messages_;
  std::shared_ptr<WiFiState> wifi_;
};

}  // namespace sentrel::simulated
