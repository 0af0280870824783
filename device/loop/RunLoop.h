#pragma once

#include <poll.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "device/common/FileDescriptor.h"
#include "sentrel/platform/MainQueue.h"

namespace sentrel::loop {

/// The one loop of a real process: it runs the main queue's blocks, the timers, the bus and, where
/// there is one, the window.
///
/// Everything runs on the thread that calls run(). Delays are measured on a clock that nobody can
/// set. What a block throws leaves run(); the loop stays usable.
class RunLoop final : public MainQueue {
 public:
  /// Something outside the queue that the loop waits for: a connection, a window.
  class Source {
   public:
    /// What ends the loop's wait on behalf of this source.
    struct Wish {
      int descriptor = -1;             ///< none if negative
      short events = 0;                ///< as for poll()
      std::optional<Seconds> timeout;  ///< from now; none: only the descriptor counts
    };

    virtual ~Source() = default;

    /// Asked before every wait.
    virtual Wish prepare() = 0;

    /// Called when the descriptor is ready or the time is over. May add sources and stop the loop.
    virtual void dispatch() = 0;
  };

  RunLoop();
  RunLoop(const RunLoop&) = delete;
  RunLoop& operator=(const RunLoop&) = delete;

  void async(Block block) override;
  void after(Seconds delay, Block block) override;
  std::uint64_t turn() const override { return turn_; }

  /// Watches `source` for as long as it lives. To be called on the loop's thread, or before run().
  void add(std::weak_ptr<Source> source);

  /// Runs until stop() is called; at once if it was called since the last run ended.
  void run();

  /// Makes the current run, or else the next, end after the turn under way. May be called from any
  /// thread and from a signal handler.
  void stop() noexcept;

  /// Ends a wait under way, so that every source is asked again. As free to call as stop().
  void wake() noexcept;

 private:
  using Moment = std::chrono::steady_clock::time_point;
  using Due = std::pair<Moment, std::uint64_t>;
  struct Waiting {
    std::shared_ptr<Source> source;
    Moment deadline;
  };

  void runOnce();
  void runDueBlocks();
  Block takeDue(Moment now, std::uint64_t limit);
  std::optional<Seconds> untilNextBlock();
  void waitAndDispatch();
  std::optional<Seconds> prepareSources();
  void forgetWake() noexcept;

  std::mutex mutex_;
  std::map<Due, Block> blocks_;
  std::uint64_t queued_ = 0;
  bool isWaiting_ = false;

  // Of the loop's thread alone. The two lists of a wait are members to keep their memory.
  std::uint64_t turn_ = 0;
  std::vector<std::weak_ptr<Source>> sources_;
  std::vector<Waiting> waiting_;
  std::vector<pollfd> descriptors_;

  std::atomic<bool> stopping_{false};
  const FileDescriptor wakeDescriptor_;
};

}  // namespace sentrel::loop
