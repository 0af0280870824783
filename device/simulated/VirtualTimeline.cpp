#include "device/simulated/VirtualTimeline.h"

#include <algorithm>

namespace sentrel::simulated {

WallTime VirtualTimeline::now() const {
  const std::lock_guard lock(mutex_);
  return WallTime(steadyNow_.time_since_epoch() + wallClockAhead_);
}

SteadyTime VirtualTimeline::steadyNow() const {
  const std::lock_guard lock(mutex_);
  return steadyNow_;
}

void VirtualTimeline::setWallClock(WallTime now) {
  const std::lock_guard lock(mutex_);
  wallClockAhead_ = now.time_since_epoch() - steadyNow_.time_since_epoch();
}

void VirtualTimeline::after(Seconds delay, Block block) {
  const std::lock_guard lock(mutex_);
  const SteadyTime due =
      delay > Seconds(0) ? steadyNow_ + delay : steadyNow_;  // no number is no delay
  blocks_.emplace(Due(due, queued_++), std::move(block));
}

void VirtualTimeline::advance(Seconds time) {
  const SteadyTime end = steadyNow() + time;
  while (runFirst(end)) {
  }
  const std::lock_guard lock(mutex_);
  steadyNow_ = end;
  ++turn_;
}

bool VirtualTimeline::runNextMoment(SteadyTime latest) {
  if (!runFirst(latest)) return false;
  const SteadyTime moment = steadyNow();
  while (runFirst(moment)) {
  }
  return true;
}

void VirtualTimeline::runUntilIdle() {
  while (runFirst(SteadyTime::max())) {
  }
}

bool VirtualTimeline::runFirst(SteadyTime latest) {
  Block block;
  {
    const std::lock_guard lock(mutex_);
    if (blocks_.empty() || blocks_.begin()->first.first > latest) return false;
    auto first = blocks_.extract(blocks_.begin());
    steadyNow_ = std::max(steadyNow_, first.key().first);
    block = std::move(first.mapped());
  }
  ++turn_;
  block();
  ++turn_;
  return true;
}

}  // namespace sentrel::simulated
