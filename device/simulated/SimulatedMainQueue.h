#pragma once

#include <memory>

#include "device/simulated/VirtualTimeline.h"
#include "sentrel/Process.h"
#include "sentrel/platform/MainQueue.h"

namespace sentrel::simulated {

/// One process's main queue on the device's virtual time. Blocks run inside their process, and are
/// dropped when it is gone.
class SimulatedMainQueue final : public MainQueue {
 public:
  explicit SimulatedMainQueue(VirtualTimeline& timeline) : timeline_(timeline) {}

  /// The process to run blocks in; to be said before the first block is due.
  void setProcess(std::weak_ptr<Process> process) { process_ = std::move(process); }

  void async(Block block) override { after(Seconds(0), std::move(block)); }

  void after(Seconds delay, Block block) override {
    timeline_.after(delay, [process = process_, block = std::move(block)] {
      const auto alive = process.lock();
      if (!alive) return;
      Process::Scope scope(*alive);
      block();
    });
  }

  std::uint64_t turn() const override { return timeline_.turn(); }

 private:
  VirtualTimeline& timeline_;
  std::weak_ptr<Process> process_;
};

}  // namespace sentrel::simulated
