#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace sentrel {

/// What may become of the requests and deferred actions of one process, kept by whoever watches
/// from outside: who asked, who proved to be the owner and when, and how each request ended. It
/// knows nothing of how prompts work.
///
/// A replaced request never ends. A proof that takes effect later, such as a match that the glyph
/// is still showing, holds for the request in progress then, also for one that began after it.
class PromptLedger {
 public:
  enum class Proof { passcode, match };

  /// Answers the request's number. It begins on a later turn.
  std::size_t ask(bool takesPasscodeAlone) {
    requests_.push_back({.takesPasscodeAlone = takesPasscodeAlone});
    return requests_.size() - 1;
  }

  /// Answers the action's number.
  std::size_t defer() {
    actions_.push_back({.isOpen = true, .keeper = inProgress()});
    return actions_.size() - 1;
  }

  /// The turn is over: each action of it has found its request, if there was any.
  void endTurn() {
    for (Action& action : actions_) {
      if (!std::exchange(action.isOpen, false)) continue;
      for (std::size_t asked = askedBefore_; asked < requests_.size(); ++asked)
        action.owners.insert(asked);
      if (action.owners.empty() && action.keeper != none) action.owners.insert(action.keeper);
    }
    askedBefore_ = requests_.size();
  }

  /// The request takes over, and so it does what waits for any.
  void begin(std::size_t request) {
    begun_ = request;
    for (Action& action : actions_)
      if (!action.isOpen && action.owners.empty())
        action = {.owners = {request}, .mayBeLost = true, .hasRun = action.hasRun};
  }

  /// The owner is proven to whoever is in progress at `moment`.
  void provenAt(double moment, Proof proof) { proofs_.push_back({moment, proof}); }

  /// The watch stands in for the owner in the request alone that had it asked.
  void watchAgrees(std::size_t request) {
    if (request != none && !requests_[request].takesPasscodeAlone) agreedOn_.insert(request);
  }

  // What may fail a request: its own Cancel button, or what fails whatever is in progress then.
  void mayBeCancelled(std::size_t request) { cancelled_.insert(request); }
  void mayFailAt(double moment) {
    failures_.push_back(moment);
    // What was set in this turn may go with it, or stay for a request that is yet to be asked for.
    for (Action& action : actions_)
      action.mayBeLost |= action.isOpen;
  }

  void run(std::size_t number, double now) {
    Action& action = actions_.at(number);
    if (std::exchange(action.hasRun, true)) complain("an action ran twice");
    const auto agreedOn = [this](std::size_t owner) { return agreedOn_.contains(owner); };
    // The watch's request ends a turn later, or never if it is replaced first.
    if (std::ranges::any_of(action.owners, agreedOn)) return;
    if (action.owners.empty() && inProgress() == none && isProvenAt(now)) return;
    ran_.push_back(number);
  }

  void end(std::size_t request, bool authenticated, bool allowed, double now) {
    Request& ended = requests_.at(request);
    if (++ended.ends > 1) complain("a request ended twice");
    if (authenticated != allowed) complain("the two flags of an outcome differ");
    if (request != begun_) complain("a request ended that had been replaced");
    if (authenticated && !isProven(request, now)) complain("a request succeeded without proof");
    if (!authenticated && !mayFail(request, now)) complain("a request failed without a cause");
    settleActions(request, authenticated);
  }

  /// The request that began last; or `none`, as where it has ended.
  std::size_t begun() const { return begun_; }
  std::size_t inProgress() const {
    return begun_ == none || requests_[begun_].ends > 0 ? none : begun_;
  }

  /// Whether what the sensor reports counts for the request in progress.
  bool takesTouch() const { return inProgress() == none || !requests_[begun_].takesPasscodeAlone; }

  void comeToRest() {
    if (inProgress() != none) complain("a request never ended");
    if (!ran_.empty()) complain("an action ran and no request succeeded");
  }

  /// The first thing that must never happen.
  void complain(const std::string& text) {
    if (!complaint_) complaint_ = text;
  }
  const std::optional<std::string>& complaint() const { return complaint_; }

  static constexpr std::size_t none = static_cast<std::size_t>(-1);

 private:
  struct Request {
    bool takesPasscodeAlone = false;
    int ends = 0;
  };

  struct Action {
    /// Its turn is not over yet.
    bool isOpen = false;
    /// In progress when it was set.
    std::size_t keeper = none;
    /// The requests that may run it: more than one where several were asked for in its turn.
    std::set<std::size_t> owners;
    bool mayBeLost = false;
    bool hasRun = false;
  };

  struct ProofAt {
    double moment;
    Proof proof;
  };

  void settleActions(std::size_t request, bool succeeded) {
    for (const std::size_t number : std::exchange(ran_, {}))
      if (!succeeded || !actions_[number].owners.contains(request))
        complain("an action ran without its request's success");
    const Action* due = nullptr;
    for (const Action& action : actions_)
      if (action.owners == std::set{request}) due = &action;
    if (succeeded && due && !due->mayBeLost && !due->hasRun) complain("an action did not run");
  }

  bool isProven(std::size_t request, double now) const {
    if (agreedOn_.contains(request)) return true;
    return std::ranges::any_of(proofs_, [&](const ProofAt& proof) {
      return isSame(proof.moment, now) &&
             (proof.proof == Proof::passcode || !requests_[request].takesPasscodeAlone);
    });
  }

  bool isProvenAt(double now) const {
    return std::ranges::any_of(proofs_,
                               [now](const ProofAt& proof) { return isSame(proof.moment, now); });
  }

  bool mayFail(std::size_t request, double now) const {
    return cancelled_.contains(request) ||
           std::ranges::any_of(failures_, [now](double moment) { return isSame(moment, now); });
  }

  static bool isSame(double moment, double now) { return std::abs(moment - now) < 1e-6; }

  std::vector<Request> requests_;
  std::size_t begun_ = none;
  std::size_t askedBefore_ = 0;
  std::vector<Action> actions_;
  /// Since the last request ended.
  std::vector<std::size_t> ran_;
  std::vector<ProofAt> proofs_;
  std::set<std::size_t> cancelled_;
  std::vector<double> failures_;
  std::set<std::size_t> agreedOn_;
  std::optional<std::string> complaint_;
};

}  // namespace sentrel
