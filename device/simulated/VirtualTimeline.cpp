#include "device/simulated/VirtualTimeline.h"

#include <algorithm>

namespace sentrel::simulated {

void VirtualTimeline::setWallClock(WallTime now) {
  const Seconds shift = now - now_;
  std::map<Due, Block> shifted;
  for (auto& [due, block] : blocks_)
    shifted.emplace(Due(due.first + shift, due.second), std::move(block));
  blocks_ = std::move(shifted);
  now_ = now;
}

void VirtualTimeline::after(Seconds delay, Block block) {
  const WallTime due = delay > Seconds(0) ? now_ + delay : now_;  // no number is no delay
  blocks_.emplace(Due(due, queued_++), std::move(block));
}

void VirtualTimeline::advance(Seconds time) {
  const WallTime end = now_ + time;
  while (!blocks_.empty() && blocks_.begin()->first.first <= end)
    runFirst();
  now_ = end;
}

bool VirtualTimeline::runNextMoment(WallTime latest) {
  if (blocks_.empty() || blocks_.begin()->first.first > latest) return false;
  const WallTime moment = std::max(now_, blocks_.begin()->first.first);
  while (!blocks_.empty() && blocks_.begin()->first.first <= moment)
    runFirst();
  return true;
}

void VirtualTimeline::runUntilIdle() {
  while (!blocks_.empty())
    runFirst();
}

void VirtualTimeline::runFirst() {
  auto first = blocks_.extract(blocks_.begin());
  now_ = std::max(now_, first.key().first);
  first.mapped()();
}

}  // namespace sentrel::simulated
