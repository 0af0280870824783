#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// A named event, with a payload where its kind of centre carries one.
struct Notification {
  std::string name;
  std::optional<PropertyList::Dictionary> userInfo;
};

/// An observer's registration: it ends when the last copy is gone.
using Observation = std::shared_ptr<void>;

/// One of the three kinds of centre: Darwin (all processes, no payload), distributed (all
/// processes, with payload) and local (this process alone).
///
/// Whoever observes the name hears of it on his process's main queue, the poster too, as often as
/// it was posted and in that order: of a Darwin or distributed one on a later turn, of a local one
/// before `post` returns. One that nobody observes is lost.
class SENTREL_API NotificationCenter {
 public:
  using Observer = std::function<void(const Notification&)>;

  virtual ~NotificationCenter() = default;

  /// A Darwin centre drops the payload.
  virtual void post(Notification notification) = 0;

  [[nodiscard]] virtual Observation addObserver(const std::string& name, Observer observer) = 0;
};

}  // namespace sentrel
