#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

#include "sentrel/platform/Clock.h"

namespace sentrel::simulated {

/// Virtual time, shared by every process of a simulated device. Time stands still while a block
/// runs and jumps from one due block to the next, so every block sees the moment it was due at.
/// Blocks are queued from any thread; one thread at a time moves time on and runs them.
class VirtualTimeline final : public Clock {
 public:
  using Block = std::function<void()>;

  WallTime now() const override;
  SteadyTime steadyNow() const override;

  /// Sets the wall clock back or forward without running anything: what is due stays as far away
  /// as it was.
  void setWallClock(WallTime now);

  /// Queues `block` for `delay` from now, behind what is already due at that moment.
  void after(Seconds delay, Block block);

  /// Runs what is due now, including what that queues for now.
  void runDue() { advance(Seconds(0)); }

  /// Runs everything that falls due within `time`, in order, and ends that much later.
  void advance(Seconds time);

  /// Goes to the next moment at which anything is due and runs what is due then. Does nothing, and
  /// returns false, where that is later than `latest`.
  bool runNextMoment(SteadyTime latest);

  /// Runs until nothing is left, however far away it is.
  void runUntilIdle();

  /// How often a block has begun or ended, or time was made to pass: another number within each
  /// block and between any two.
  std::uint64_t turn() const noexcept { return turn_; }

 private:
  using Due = std::pair<SteadyTime, std::uint64_t>;

  /// Runs the first block that is due at `latest` or before. False where there is none.
  bool runFirst(SteadyTime latest);

  mutable std::mutex mutex_;
  SteadyTime steadyNow_{Seconds(1'700'000'000)};
  Seconds wallClockAhead_{0};
  std::uint64_t queued_ = 0;
  std::atomic<std::uint64_t> turn_ = 0;
  std::map<Due, Block> blocks_;
};

}  // namespace sentrel::simulated
