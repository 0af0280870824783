#include "sentrel/controller/DeferredActions.h"

#include <utility>

namespace sentrel {

void DeferredActions::set(Action action, Turn turn, Request inProgress) {
  if (!action) {
    actions_.clear();
    unclaimed_.reset();
    return;
  }
  settleUnless(turn);
  const bool isAsked = asked_ != nobody && askedIn_ == turn;
  if (isAsked && asked_ != ended && !actions_.contains(asked_))
    actions_.emplace(asked_, std::move(action));
  else
    unclaimed_ = Unclaimed{std::move(action), turn, isAsked ? asked_ : inProgress};
}

void DeferredActions::askedFor(Request request, Turn turn) {
  settleUnless(turn);
  asked_ = request;
  askedIn_ = turn;
  if (!unclaimed_) return;
  unclaimed_->keeper = request;
  settle();
}

void DeferredActions::begin(Request request) {
  settle();
  if (auto waiting = actions_.extract(nobody))
    actions_.try_emplace(request, std::move(waiting.mapped()));
}

DeferredActions::Action DeferredActions::take(Request request) {
  Action action;
  if (auto own = actions_.extract(request)) action = std::move(own.mapped());
  if (unclaimed_ && unclaimed_->keeper == request)
    action = std::exchange(unclaimed_, std::nullopt)->action;
  return action;
}

DeferredActions::Action DeferredActions::latest() const {
  if (unclaimed_) return unclaimed_->action;
  return actions_.empty() ? nullptr : actions_.rbegin()->second;
}

/// No request asks for the action any more: it stays with whom it was kept for.
void DeferredActions::settle() {
  if (!unclaimed_) return;
  if (unclaimed_->keeper != ended)
    actions_.insert_or_assign(unclaimed_->keeper, std::move(unclaimed_->action));
  unclaimed_.reset();
}

void DeferredActions::settleUnless(Turn turn) {
  if (unclaimed_ && unclaimed_->turn != turn) settle();
}

}  // namespace sentrel
