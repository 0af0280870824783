#include "device/loop/RunLoop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace sentrel::loop {
namespace {

/// Far enough for any delay, and small enough for every clock and system call below.
constexpr Seconds longestDelay{1e8};

std::chrono::steady_clock::duration steadyDelay(Seconds delay) {
  if (!(delay > Seconds(0))) return {};  // not a number, too
  return std::chrono::ceil<std::chrono::steady_clock::duration>(std::min(delay, longestDelay));
}

void waitFor(std::vector<pollfd>& descriptors, std::optional<Seconds> timeout) {
  timespec time{};
  if (timeout) {
    const auto nanoseconds = steadyDelay(*timeout).count();
    time = {nanoseconds / 1'000'000'000, nanoseconds % 1'000'000'000};
  }
  const int ready = ppoll(descriptors.data(), descriptors.size(), timeout ? &time : nullptr, {});
  if (ready >= 0) return;
  if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "ppoll");
  for (pollfd& descriptor : descriptors)
    descriptor.revents = 0;
}

std::optional<Seconds> earlier(std::optional<Seconds> a, std::optional<Seconds> b) {
  if (!a || !b) return a ? a : b;
  return std::min(*a, *b);
}

}  // namespace

RunLoop::RunLoop() : wakeDescriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!wakeDescriptor_) throw std::system_error(errno, std::generic_category(), "eventfd");
}

void RunLoop::async(Block block) {
  after(Seconds(0), std::move(block));
}

void RunLoop::after(Seconds delay, Block block) {
  const Moment due = std::chrono::steady_clock::now() + steadyDelay(delay);
  std::lock_guard lock(mutex_);
  blocks_.emplace(Due(due, queued_++), std::move(block));
  if (isWaiting_) wake();
}

void RunLoop::add(std::weak_ptr<Source> source) {
  sources_.push_back(std::move(source));
}

void RunLoop::run() {
  while (!stopping_.load())
    runOnce();
  ++turn_;
  stopping_.store(false);
}

void RunLoop::stop() noexcept {
  stopping_.store(true);
  wake();
}

void RunLoop::wake() noexcept {
  const int error = errno;  // a signal handler must leave it alone
  const std::uint64_t one = 1;
  // A full counter is as good a wake-up as a written one.
  [[maybe_unused]] const auto written = write(wakeDescriptor_.number(), &one, sizeof one);
  errno = error;
}

void RunLoop::runOnce() {
  runDueBlocks();
  if (!stopping_.load()) waitAndDispatch();
}

/// Leaves what the blocks themselves queue to the next turn, so that they cannot starve the bus.
void RunLoop::runDueBlocks() {
  const Moment now = std::chrono::steady_clock::now();
  const std::uint64_t limit = [this] {
    std::lock_guard lock(mutex_);
    return queued_;
  }();
  while (const Block block = takeDue(now, limit)) {
    ++turn_;
    block();
    if (stopping_.load()) return;
  }
}

RunLoop::Block RunLoop::takeDue(Moment now, std::uint64_t limit) {
  std::lock_guard lock(mutex_);
  const auto first = blocks_.begin();
  if (first == blocks_.end() || first->first.first > now || first->first.second >= limit) return {};
  return std::move(blocks_.extract(first).mapped());
}

std::optional<Seconds> RunLoop::untilNextBlock() {
  std::lock_guard lock(mutex_);
  isWaiting_ = true;
  if (blocks_.empty()) return std::nullopt;
  const Seconds left = blocks_.begin()->first.first - std::chrono::steady_clock::now();
  return std::max(left, Seconds(0));
}

void RunLoop::waitAndDispatch() {
  std::optional<Seconds> timeout = prepareSources();
  timeout = earlier(timeout, untilNextBlock());
  waitFor(descriptors_, timeout);
  forgetWake();
  const Moment now = std::chrono::steady_clock::now();
  for (std::size_t i = 0; i < waiting_.size(); ++i) {
    const bool isReady = descriptors_[i + 1].revents != 0;
    if (!isReady && waiting_[i].deadline > now) continue;
    ++turn_;
    waiting_[i].source->dispatch();
  }
  waiting_.clear();
}

/// Fills the two lists of the wait, and returns how long it may last on account of the sources.
std::optional<Seconds> RunLoop::prepareSources() {
  waiting_.clear();
  descriptors_.assign(1, {wakeDescriptor_.number(), POLLIN, 0});
  std::optional<Seconds> timeout;
  std::erase_if(sources_, [](const auto& source) { return source.expired(); });
  const Moment now = std::chrono::steady_clock::now();
  for (const auto& entry : sources_) {
    auto source = entry.lock();
    const Source::Wish wish = source->prepare();
    descriptors_.push_back({wish.descriptor, wish.events, 0});
    const Moment deadline = wish.timeout ? now + steadyDelay(*wish.timeout) : Moment::max();
    waiting_.push_back({std::move(source), deadline});
    timeout = earlier(timeout, wish.timeout);
  }
  return timeout;
}

void RunLoop::forgetWake() noexcept {
  {
    std::lock_guard lock(mutex_);
    isWaiting_ = false;
  }
  if (!descriptors_.front().revents) return;
  std::uint64_t count = 0;
  [[maybe_unused]] const auto got = read(wakeDescriptor_.number(), &count, sizeof count);
}

}  // namespace sentrel::loop
