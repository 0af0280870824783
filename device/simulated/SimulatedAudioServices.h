#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "device/simulated/Journal.h"
#include "sentrel/platform/AudioServices.h"

namespace sentrel::simulated {

/// Plays nothing, and remembers what was to be played, in the journal as well.
class SimulatedAudioServices final : public AudioServices {
 public:
  struct Played {
    std::uint32_t sound;
    PropertyList::Dictionary pattern;
  };

  explicit SimulatedAudioServices(std::shared_ptr<Journal> journal)
      : journal_(std::move(journal)) {}

  void playSystemSoundWithVibration(std::uint32_t sound,
                                    const PropertyList::Dictionary& pattern) override {
    journal_->record("play sound " + std::to_string(sound) + " with " + describe(pattern));
    played_.push_back({sound, pattern});
  }

  const std::vector<Played>& played() const noexcept { return played_; }

 private:
  std::shared_ptr<Journal> journal_;
  std::vector<Played> played_;
};

}  // namespace sentrel::simulated
