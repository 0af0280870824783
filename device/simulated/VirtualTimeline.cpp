#include "device/simulated/VirtualTimeline.h"

#include <algorithm>

namespace sentrel::simulated {

WallTime VirtualTimeline::now() const {
  const std::lock_guard lock(mutex_);
  return now_;
}

void VirtualTimeline::setWallClock(WallTime now) {
  const std::lock_guard lock(mutex_);
  const Seconds shift = now - now_;
  std::map<Due, Block> shifted;
  for (auto& [due, block] : blocks_)
    shifted.emplace(Due(due.first + shift, due.second), std::move(block));
  blocks_ = std::move(shifted);
  now_ = now;
}

void VirtualTimeline::after(Seconds delay, Block block) {
  const std::lock_guard lock(mutex_);
  const WallTime due = delay > Seconds(0) ? now_ + delay : now_;  // no number is no delay
  blocks_.emplace(Due(due, queued_++), std::move(block));
}

void VirtualTimeline::advance(Seconds time) {
  const WallTime end = now() + time;
  while (runFirst(end)) {
  }
  const std::lock_guard lock(mutex_);
  now_ = end;
  ++turn_;
}

bool VirtualTimeline::runNextMoment(WallTime latest) {
  if (!runFirst(latest)) return false;
  const WallTime moment = now();
  while (runFirst(moment)) {
  }
  return true;
}

void VirtualTimeline::runUntilIdle() {
  while (runFirst(WallTime::max())) {
  }
}

bool VirtualTimeline::runFirst(WallTime latest) {
  Block block;
  {
    const std::lock_guard lock(mutex_);
    if (blocks_.empty() || blocks_.begin()->first.first > latest) return false;
    auto first = blocks_.extract(blocks_.begin());
    now_ = std::max(now_, first.key().first);
    block = std::move(first.mapped());
  }
  ++turn_;
  block();
  ++turn_;
  return true;
}

}  // namespace sentrel::simulated
