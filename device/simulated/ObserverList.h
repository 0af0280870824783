#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "sentrel/platform/BiometricObserver.h"

namespace sentrel::simulated {

/// Observers in the order in which they were added, none of them kept alive.
class ObserverList {
 public:
  using Observer = std::shared_ptr<BiometricObserver>;

  std::vector<Observer> alive() const {
    std::vector<Observer> found;
    for (const auto& entry : entries_)
      if (auto observer = entry.lock()) found.push_back(std::move(observer));
    return found;
  }

  void add(const Observer& observer) {
    remove(observer);
    entries_.push_back(observer);
  }

  void remove(const Observer& observer) {
    std::erase_if(entries_, [&observer](const auto& entry) { return entry.lock() == observer; });
  }

  /// Tells those that are alive, but none that one before it has taken out.
  template <class Tell>
  void tell(Tell tell) const {
    for (const Observer& observer : alive())
      if (has(observer)) tell(*observer);
  }

 private:
  bool has(const Observer& observer) const {
    return std::any_of(entries_.begin(), entries_.end(),
                       [&observer](const auto& entry) { return entry.lock() == observer; });
  }

  std::vector<std::weak_ptr<BiometricObserver>> entries_;
};

}  // namespace sentrel::simulated
