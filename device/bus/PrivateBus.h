#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

#include "device/common/FileDescriptor.h"

namespace sentrel::bus {

/// A message bus that belongs to this process: a dbus-daemon of our own, for processes of the same
/// user, whose socket lies in a fresh folder that nobody else may enter.
///
/// The daemon ends with this object, and also when the thread that made this object ends in any
/// other way, so make it on the main thread.
class PrivateBus {
 public:
  /// Returns once the bus takes connections; throws BusError where it cannot be started.
  PrivateBus();
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const std::string& address() const noexcept { return address_; }
  pid_t daemon() const noexcept { return daemon_; }

 private:
  void start();
  FileDescriptor startDaemon(char* const* arguments);
  void end() noexcept;

  std::filesystem::path folder_;
  std::string address_;
  pid_t daemon_ = -1;
};

}  // namespace sentrel::bus
