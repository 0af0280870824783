#include "programs/common/LineReader.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace sentrel::programs {
namespace {

constexpr std::size_t longestLine = 64 * 1024;

}  // namespace

bus::RunLoop::Source::Wish LineReader::prepare() {
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
  if (atEnd_ == AtEnd::stop) loop_.stop();
}

void LineReader::handleLines() {
  for (;;) {
    const std::size_t end = std::min(pending_.find('\n'), longestLine);
    if (end >= pending_.size()) return;
    const std::string line = pending_.substr(0, end);
    pending_.erase(0, end + (pending_[end] == '\n' ? 1 : 0));
    handler_(line);
  }
}

}  // namespace sentrel::programs
