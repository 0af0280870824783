#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "sentrel/platform/Xpc.h"

namespace sentrel::host {

/// What the sharing daemon is made to do with a message: a query about the watch is answered, any
/// other is left to the daemon itself.
///
/// Call it inside the sharing daemon. Copies answer alike.
class WatchResponder {
 public:
  /// The watch's signal at the moment, in dBm: measured twice.
  struct Signal {
    std::int64_t first;
    std::int64_t second;
  };

  explicit WatchResponder(std::function<Signal()> signal) : signal_(std::move(signal)) {}

  void operator()(const std::shared_ptr<XpcMessage>& message) const;

 private:
  std::function<Signal()> signal_;
};

}  // namespace sentrel::host
