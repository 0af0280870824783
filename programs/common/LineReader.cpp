#include "programs/common/LineReader.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <utility>

namespace sentrel::programs {
namespace {

constexpr std::size_t longestLine = std::size_t{64} * 1024;

class LineReader final : public loop::RunLoop::Source {
 public:
  LineReader(loop::RunLoop& loop, LineHandler handler, std::function<void()> atEnd)
      : loop_(loop), handler_(std::move(handler)), atEnd_(std::move(atEnd)) {}

  Wish prepare() override;
  void dispatch() override;

 private:
  void handleLines();
  void ignoreIfTooLong(std::size_t length);

  loop::RunLoop& loop_;
  LineHandler handler_;
  std::function<void()> atEnd_;
  std::string pending_;
  bool isIgnored_ = false;  // the line that pending_ starts with, or is in the middle of
  bool open_ = true;
};

loop::RunLoop::Source::Wish LineReader::prepare() {
  return {open_ ? STDIN_FILENO : -1, POLLIN, std::nullopt};
}

void LineReader::dispatch() {
  char buffer[4096];
  const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (count > 0) {
    pending_.append(buffer, static_cast<std::size_t>(count));
    return handleLines();
  }
  open_ = false;
  if (!pending_.empty()) pending_ += '\n';
  handleLines();
  if (atEnd_) loop_.async(std::move(atEnd_));
}

void LineReader::handleLines() {
  for (auto end = pending_.find('\n'); end != pending_.npos; end = pending_.find('\n')) {
    ignoreIfTooLong(end);
    std::string line = pending_.substr(0, end);
    pending_.erase(0, end + 1);
    if (line.ends_with('\r')) line.pop_back();
    if (!std::exchange(isIgnored_, false)) handler_(line);
  }
  ignoreIfTooLong(pending_.size());
  if (isIgnored_) pending_.clear();
}

void LineReader::ignoreIfTooLong(std::size_t length) {
  if (length <= longestLine) return;
  isIgnored_ = true;
  std::fprintf(stderr, "input: a line of more than %zu bytes is ignored\n", longestLine);
}

}  // namespace

void runOnInput(loop::RunLoop& loop, LineHandler handler, std::function<void()> atEnd) {
  // The loop does not keep it.
  const auto reader = std::make_shared<LineReader>(loop, std::move(handler), std::move(atEnd));
  loop.add(reader);
  loop.run();
}

}  // namespace sentrel::programs
