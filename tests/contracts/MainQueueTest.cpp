#include "sentrel/platform/MainQueue.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "device/loop/RunLoop.h"
#include "device/loop/SystemClock.h"
#include "device/simulated/SimulatedDevice.h"
#include "tests/support/BusTesting.h"

namespace sentrel {
namespace {

class Simulated {
 public:
  MainQueue& queue() { return *process_->process().platform().mainQueue; }
  const Clock& clock() { return device_.time(); }
  void runUntil(const std::function<bool()>&) { device_.time().advance(Seconds(1)); }

 private:
  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> process_ = device_.launch("com.example.app");
};

class Real {
 public:
  MainQueue& queue() { return loop_; }
  const Clock& clock() { return clock_; }
  void runUntil(const std::function<bool()>& condition) { bus::runUntil(loop_, condition); }

 private:
  loop::RunLoop loop_;
  loop::SystemClock clock_;
};

template <class Implementation>
class MainQueues : public ::testing::Test {
 protected:
  void expectOrder(const std::string& order) {
    EXPECT_EQ(order_, "");
    device_.runUntil([this, &order] { return order_.size() >= order.size(); });
    EXPECT_EQ(order_, order);
  }

  MainQueue::Block noting(char c) {
    return [this, c] { order_ += c; };
  }

  Implementation device_;
  MainQueue& queue_ = device_.queue();
  std::string order_;
};

using Implementations = ::testing::Types<Simulated, Real>;
TYPED_TEST_SUITE(MainQueues, Implementations);

TYPED_TEST(MainQueues, RunBlocksInDueOrderAndTheFirstQueuedFirst) {
  using Limits = std::numeric_limits<double>;
  this->queue_.after(Seconds(0.02), this->noting('f'));
  this->queue_.after(Seconds(0.01), this->noting('e'));
  this->queue_.async(this->noting('a'));
  this->queue_.after(Seconds(-1), this->noting('b'));
  this->queue_.after(Seconds(Limits::quiet_NaN()), this->noting('c'));
  this->queue_.after(Seconds(0), this->noting('d'));
  this->queue_.after(Seconds(Limits::infinity()), this->noting('!'));
  this->expectOrder("abcdef");
}

TYPED_TEST(MainQueues, RunWhatABlockQueuesOnALaterTurn) {
  this->queue_.async([this] {
    this->queue_.async(this->noting('c'));
    this->noting('a')();
  });
  this->queue_.async(this->noting('b'));
  this->expectOrder("abc");
}

TYPED_TEST(MainQueues, TakeBlocksFromEveryThread) {
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread)
      threads.emplace_back([this] {
        for (int i = 0; i < 50; ++i)
          this->queue_.async(this->noting('a'));
      });
  }
  this->expectOrder(std::string(200, 'a'));
}

TYPED_TEST(MainQueues, DelaysPassOnTheSteadyClock) {
  const SteadyTime start = this->device_.clock().steadyNow();
  Seconds passed{};
  this->queue_.after(Seconds(0.01), [&] {
    passed = this->device_.clock().steadyNow() - start;
    this->noting('a')();
  });
  this->expectOrder("a");
  EXPECT_GT(passed, Seconds(0.0099));
}

}  // namespace
}  // namespace sentrel
