#pragma once

#include <functional>
#include <memory>
#include <string>

#include "device/loop/RunLoop.h"

namespace sentrel::bus {

/// Tells when the process that now serves a name on a bus no longer does: it ended, it gave the
/// name away, or the bus is gone. Has a connection of its own, so that whatever becomes of others
/// does not matter here.
///
/// To be made and destroyed on the thread that runs the loop.
class ServiceWatch {
 public:
  /// `onGone` runs once, on a later turn of `loop`, and soon where nobody serves the name now. It
  /// does not run any more when this object is gone. The loop outlives it.
  ServiceWatch(loop::RunLoop& loop, const std::string& address, const std::string& service,
               std::function<void()> onGone);
  ~ServiceWatch();
  ServiceWatch(const ServiceWatch&) = delete;
  ServiceWatch& operator=(const ServiceWatch&) = delete;

 private:
  class Link;

  std::shared_ptr<Link> link_;
};

}  // namespace sentrel::bus
