#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "sentrel/controller/Invocation.h"
#include "sentrel/platform/Export.h"

namespace sentrel {

/// The actions that wait for the outcome of requests, one at most for each.
///
/// An action belongs to the request that is asked for in the same turn of the main queue, before or
/// after it is set; set in a turn that asks for nothing it belongs to the request in progress.
/// Where there is none, it waits for the next that begins. Main thread only.
class SENTREL_API DeferredActions {
 public:
  /// Names a request: each has its own, and once it is over it is nobody's.
  using Request = std::uint64_t;

  /// A turn of the main queue, as MainQueue::turn() tells.
  using Turn = std::uint64_t;

  using Action = std::shared_ptr<Invocation>;

  static constexpr Request nobody = 0;

  /// Any that is over as soon as it is asked for. What belongs to it is never run.
  static constexpr Request ended = ~Request(0);

  /// Null forgets every action.
  void set(Action action, Turn turn, Request inProgress);

  void askedFor(Request request, Turn turn);
  void begin(Request request);

  /// The action of `request`, which has none afterwards; or null.
  Action take(Request request);
  void drop(Request request) { take(request); }

  /// What was set in this turn, or else the action of the latest request; or null.
  Action latest() const;

 private:
  /// A request that is yet to be asked for in the same turn takes it from the one it is kept for.
  struct Unclaimed {
    Action action;
    Turn turn = 0;
    Request keeper = nobody;
  };

  void settle();
  void settleUnless(Turn turn);

  std::map<Request, Action> actions_;
  std::optional<Unclaimed> unclaimed_;
  Request asked_ = nobody;
  Turn askedIn_ = 0;
};

}  // namespace sentrel
