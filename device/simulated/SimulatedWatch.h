#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/simulated/Journal.h"
#include "sentrel/platform/SharingDaemon.h"
#include "sentrel/platform/Xpc.h"

namespace sentrel::simulated {

/// The watch of a device's owner: at first one that is paired, but off the wrist, locked and far.
class SimulatedWatch {
 public:
  /// One state that was sent to wake the watch.
  struct WakeUp {
    PropertyList::Dictionary state;
    std::optional<bool> waking;  ///< none where it was sent the older way
    bool isOnAgentQueue;
  };

  explicit SimulatedWatch(std::shared_ptr<Journal> journal) : journal_(std::move(journal)) {}

  bool isPaired = true;
  std::optional<std::string> name = "Watch";
  std::int64_t wristState = 0;
  std::int32_t lockState = 1;
  bool isNearby = false;
  bool isActive = false;
  bool isConnected = false;

  /// The two signal values, in dBm.
  std::int64_t firstRSSI = 0;
  std::int64_t secondRSSI = 0;

  void wakeUp(WakeUp wakeUp) { wakeUps_.push_back(std::move(wakeUp)); }
  const std::vector<WakeUp>& wakeUps() const noexcept { return wakeUps_; }

  /// A tap, which goes to the journal as well.
  void tap(double intensity);

  /// The intensity of every tap so far.
  const std::vector<double>& taps() const noexcept { return taps_; }

  /// How many connections to the audio control are resumed and not yet invalidated.
  int openAudioConnections = 0;

 private:
  std::shared_ptr<Journal> journal_;
  std::vector<WakeUp> wakeUps_;
  std::vector<double> taps_;
};

using SharedWatch = std::shared_ptr<SimulatedWatch>;

// The sharing daemon's classes. The watch is the last of the paired devices.
std::shared_ptr<SDPairedDeviceAgent> makePairedDeviceAgent(const SharedWatch& watch);
std::shared_ptr<SDStatusMonitor> makeStatusMonitor(const SharedWatch& watch);

/// To the audio control, which listens under its own name alone, and to the privileged alone.
std::shared_ptr<NanoAudioControlConnection> makeAudioControlConnection(
    const SharedWatch& watch, const std::string& serviceName, std::uint64_t options);

}  // namespace sentrel::simulated
