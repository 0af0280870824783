#pragma once

#include <cstdint>
#include <functional>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Seconds.h"

namespace sentrel {

/// The queue on which all logic of one process runs, one block at a time.
///
/// Blocks due at the same moment run in the order in which they were queued. Nothing queued is ever
/// cancelled, so a block holds its object weakly.
class SENTREL_API MainQueue {
 public:
  using Block = std::function<void()>;

  virtual ~MainQueue() = default;

  // Both return at once and may be called from any thread.

  /// Runs `block` on a later turn of the queue.
  virtual void async(Block block) = 0;

  /// Runs `block` once `delay` has passed; a delay of 0 or less is a later turn.
  virtual void after(Seconds delay, Block block) = 0;

  /// Which turn it is. Each block has a turn of its own, and so has whatever else the queue's
  /// thread does between two blocks; no two have the same number. That thread only.
  virtual std::uint64_t turn() const = 0;
};

}  // namespace sentrel
