#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "device/loop/RunLoop.h"

namespace sentrel::programs {

/// Hands the lines of standard input to a handler, on the run loop's thread, and stops the loop at
/// the end of the input if asked to, behind what the handler posted to it. The last line needs no
/// newline. A line over 64 KiB is ignored as a whole, and standard error says so: its pieces could
/// be commands that nobody gave.
class LineReader final : public loop::RunLoop::Source {
 public:
  enum class AtEnd { stop, goOn };
  using Handler = std::function<void(const std::string& line)>;

  LineReader(loop::RunLoop& loop, AtEnd atEnd, Handler handler)
      : loop_(loop), atEnd_(atEnd), handler_(std::move(handler)) {}

  Wish prepare() override;
  void dispatch() override;

 private:
  void handleLines();
  void ignoreIfTooLong(std::size_t length);

  loop::RunLoop& loop_;
  AtEnd atEnd_;
  Handler handler_;
  std::string pending_;
  bool isIgnored_ = false;  // the line that pending_ starts with, or is in the middle of
  bool open_ = true;
};

}  // namespace sentrel::programs
