#pragma once

#include <memory>
#include <string>

#include "device/simulated/SimulatedMainBundle.h"
#include "device/simulated/SimulatedWiFi.h"
#include "sentrel/Process.h"

namespace sentrel::simulated {

class SimulatedDevice;

/// One process of a simulated device, with its own copy of the library's shared instances. Made by
/// SimulatedDevice::launch. When it goes, everything still queued for it goes with it.
class SimulatedProcess {
 public:
  SimulatedProcess(SimulatedDevice& device, const std::string& bundleIdentifier);

  Process& process() noexcept { return *process_; }

  /// For whoever must notice that the process has ended.
  std::weak_ptr<Process> weakProcess() const noexcept { return process_; }

  /// Runs `action` inside this process and hands on its result.
  template <class Action>
  decltype(auto) run(Action action) {
    Process::Scope scope(*process_);
    return action();
  }

  SimulatedMainBundle& mainBundle() noexcept { return *mainBundle_; }
  SimulatedWiFi& wifi() noexcept { return *wifi_; }

 private:
  std::shared_ptr<SimulatedMainBundle> mainBundle_;
  std::shared_ptr<SimulatedWiFi> wifi_;
  std::shared_ptr<Process> process_;
};

}  // namespace sentrel::simulated
