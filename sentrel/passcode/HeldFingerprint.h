#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "sentrel/platform/LocalAuthentication.h"

namespace sentrel {

/// The one fingerprint evaluation under way. It is let go of on whatever thread its reply comes,
/// and only once: a second reply, or one for an evaluation that was given up, finds nothing.
class HeldFingerprint {
 public:
  using Ticket = std::uint64_t;

  std::shared_ptr<LAContext> context() const {
    const std::lock_guard lock(mutex_);
    return context_;
  }

  Ticket hold(std::shared_ptr<LAContext> context) {
    const std::lock_guard lock(mutex_);
    context_ = std::move(context);
    return ++ticket_;
  }

  /// Whether any was held or, with a ticket, that one.
  bool letGo(std::optional<Ticket> only = std::nullopt) {
    // What goes with the last reference goes behind the lock.
    std::shared_ptr<LAContext> released;
    const std::lock_guard lock(mutex_);
    if (only && *only != ticket_) return false;
    released.swap(context_);
    return released != nullptr;
  }

 private:
  mutable std::mutex mutex_;
  std::shared_ptr<LAContext> context_;
  Ticket ticket_ = 0;
};

}  // namespace sentrel
