#pragma once

#include <functional>
#include <memory>
#include <string>

#include "device/bus/BusConnection.h"
#include "device/loop/RunLoop.h"
#include "device/simulated/SimulatedDevice.h"
#include "sentrel/Process.h"

namespace sentrel::programs {

/// A program's own copy of the library on real parts: files under a device root, a connection to
/// the bus and a run loop. What only a phone has, sensors and screens, is simulated in memory, as
/// the device root describes it; what it describes wrongly is said on standard error. It makes
/// itself the process that every thread is in. To be made on the main thread, once. Throws
/// ProgramError where a file of the root is there and cannot be read for want of a descriptor or
/// memory, or because the disk fails.
class RealProcess {
 public:
  /// `busAddress` empty: no bus; nothing is answered or heard, and nothing is said about it.
  RealProcess(const char* program, const std::string& bundleIdentifier, const std::string& root,
              const std::string& busAddress);
  ~RealProcess();

  Process& process() noexcept { return *process_; }
  loop::RunLoop& loop() noexcept { return *loop_; }
  bus::BusConnection& connection() noexcept { return *connection_; }

  /// The parts of the device that are simulated.
  simulated::SimulatedDevice& device() noexcept { return device_; }

 private:
  simulated::SimulatedDevice device_;
  std::shared_ptr<loop::RunLoop> loop_;
  std::shared_ptr<bus::BusConnection> connection_;
  std::unique_ptr<Process> process_;
};

}  // namespace sentrel::programs
