#include "device/simulated/SimulatedWatch.h"

#include <utility>

namespace sentrel::simulated {
namespace {

class Agent final : public SDPairedDeviceAgent {
 public:
  explicit Agent(SharedWatch watch) : watch_(std::move(watch)) {}

  void dispatchSync(const std::function<void()>& work) override {
    isOnQueue_ = true;
    work();
    isOnQueue_ = false;
  }

  void _idsSendStateUpdateAsWaking(const PropertyList::Dictionary& state, bool waking) override {
    watch_->wakeUp({state, waking, isOnQueue_});
  }

  void _idsSendStateUpdate(const PropertyList::Dictionary& state) override {
    watch_->wakeUp({state, std::nullopt, isOnQueue_});
  }

  std::vector<PairedDevice> devices() const override {
    PairedDevice other;
    other.name = "Earphones";
    std::vector<PairedDevice> devices{std::move(other)};
    if (watch_->isPaired)
      devices.push_back({/*isDefaultPairedDevice=*/true, watch_->isNearby, watch_->isActive,
                         watch_->isConnected, watch_->name});
    return devices;
  }

 private:
  SharedWatch watch_;
  bool isOnQueue_ = false;
};

class Monitor final : public SDStatusMonitor {
 public:
  explicit Monitor(SharedWatch watch) : watch_(std::move(watch)) {}

  std::int64_t pairedWatchWristState() const override { return watch_->wristState; }
  std::int32_t pairedWatchLockState() const override { return watch_->lockState; }

 private:
  SharedWatch watch_;
};

class AudioConnection final : public NanoAudioControlConnection {
 public:
  AudioConnection(SharedWatch watch, bool isHeard) : watch_(std::move(watch)), isHeard_(isHeard) {}

  void resume() override {
    if (state_ != State::fresh) return;
    state_ = State::open;
    ++watch_->openAudioConnections;
  }

  void setHapticIntensity(double intensity) override {
    const bool makesSense = intensity >= 0 && intensity <= 1;
    if (isHeard_ && state_ == State::open && makesSense) watch_->tap(intensity);
  }

  void invalidate() override {
    if (std::exchange(state_, State::invalid) == State::open) --watch_->openAudioConnections;
  }

 private:
  enum class State { fresh, open, invalid };

  SharedWatch watch_;
  bool isHeard_;
  State state_ = State::fresh;
};

}  // namespace

void SimulatedWatch::tap(double intensity) {
  journal_->record("tap the wrist with intensity " + describe(intensity));
  taps_.push_back(intensity);
}

std::shared_ptr<SDPairedDeviceAgent> makePairedDeviceAgent(const SharedWatch& watch) {
  return std::make_shared<Agent>(watch);
}

std::shared_ptr<SDStatusMonitor> makeStatusMonitor(const SharedWatch& watch) {
  return std::make_shared<Monitor>(watch);
}

std::shared_ptr<NanoAudioControlConnection> makeAudioControlConnection(
    const SharedWatch& watch, const std::string& serviceName, std::uint64_t options) {
  const bool isHeard =
      serviceName == nanoAudioControlServiceName && (options & privilegedConnection) != 0;
  return std::make_shared<AudioConnection>(watch, isHeard);
}

}  // namespace sentrel::simulated
