#include "device/loop/RunLoop.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <thread>

#include "tests/support/BusTesting.h"

namespace sentrel::loop {
namespace {

class RunLoops : public ::testing::Test {
 protected:
  void note(char c) { order_ += c; }

  RunLoop loop_;
  std::string order_;
};

TEST_F(RunLoops, DoesNotRunABlockBeforeItIsDue) {
  const auto start = std::chrono::steady_clock::now();
  loop_.after(Seconds(0.0105), [this] { loop_.stop(); });
  loop_.run();
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::microseconds(10500));
}

TEST_F(RunLoops, WakeForTheBlocksOfOtherThreads) {
  std::jthread other([this] {
    for (int i = 0; i < 1000; ++i)
      loop_.async([this] { note('x'); });
    loop_.async([this] { loop_.stop(); });
  });
  loop_.run();
  EXPECT_EQ(order_.size(), 1000u);
}

RunLoop* signalled = nullptr;

TEST_F(RunLoops, StopFromASignalHandler) {
  signalled = &loop_;
  const auto previous = signal(SIGUSR1, [](int) { signalled->stop(); });
  std::jthread other([loopThread = pthread_self()] { pthread_kill(loopThread, SIGUSR1); });
  loop_.run();
  signal(SIGUSR1, previous);
}

TEST_F(RunLoops, KeepAStopForTheNextRunButNotForTheOneAfter) {
  loop_.stop();
  loop_.async([this] { note('a'); });
  loop_.run();
  EXPECT_EQ(order_, "");
  loop_.async([this] { loop_.stop(); });
  loop_.run();
  EXPECT_EQ(order_, "a");
}

TEST_F(RunLoops, GiveTheirSourcesATurnHoweverMuchIsQueued) {
  const std::function<void()> again = [&] { loop_.async(again); };
  loop_.async(again);
  int turns = 0;
  EXPECT_TRUE(bus::runUntil(loop_, [&] { return ++turns == 10; }));
}

TEST_F(RunLoops, StayUsableAfterABlockHasThrown) {
  loop_.async([] { throw std::runtime_error("planned"); });
  loop_.async([this] { note('a'); });
  loop_.async([this] { loop_.stop(); });
  EXPECT_THROW(loop_.run(), std::runtime_error);
  loop_.run();
  EXPECT_EQ(order_, "a");
}

class DescriptorSource final : public RunLoop::Source {
 public:
  DescriptorSource(int descriptor, std::function<void()> action)
      : descriptor_(descriptor), action_(std::move(action)) {}

  Wish prepare() override { return {descriptor_, POLLIN, std::nullopt}; }
  void dispatch() override { action_(); }

 private:
  int descriptor_;
  std::function<void()> action_;
};

TEST_F(RunLoops, WatchASourceAsLongAsItLives) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ASSERT_EQ(write(ends[1], "xx", 2), 2);
  auto source = std::make_shared<DescriptorSource>(ends[0], [&] {
    char c = 0;
    if (read(ends[0], &c, 1) == 1) note(c);
    loop_.stop();
  });
  loop_.add(source);
  loop_.run();
  EXPECT_EQ(order_, "x");
  source.reset();
  loop_.after(Seconds(0.005), [this] { loop_.stop(); });
  loop_.run();
  EXPECT_EQ(order_, "x");
  close(ends[0]);
  close(ends[1]);
}

}  // namespace
}  // namespace sentrel::loop
