#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace sentrel {

/// What may become of requests, kept by whoever watches from outside: who asked, who proved to be
/// the owner and when, and how each request ended. It knows nothing of how prompts work.
///
/// A replaced request never ends. A proof that takes effect later, such as a match that the glyph
/// is still showing, holds for the request in progress then, also for one that began after it.
class PromptLedger {
 public:
  /// Answers the request's number. It begins on the next turn.
  std::size_t ask() {
    requests_.emplace_back();
    return requests_.size() - 1;
  }

  /// A turn is over: what was asked before has begun, and has taken over.
  void turnIsOver() { begun_ = requests_.size(); }

  /// The owner is proven to whoever is in progress at `moment`.
  void provenAt(double moment) { proofs_.push_back(moment); }

  // The watch stands in for the owner in the request alone that had it asked.
  void watchAsked() { watchAskedFor_ = isInProgress(current()) ? current() : none; }
  void watchAgrees() { agreedOn_.insert(watchAskedFor_); }

  // What may fail a request: its own Cancel button, or what fails whatever is in progress then.
  void mayBeCancelled(std::size_t request) { cancelled_.insert(request); }
  void mayFailAt(double moment) { failures_.push_back(moment); }

  void end(std::size_t request, bool authenticated, bool allowed, double now) {
    Request& ended = requests_.at(request);
    if (++ended.ends > 1) complain("a request ended twice");
    if (authenticated != allowed) complain("the two flags of an outcome differ");
    if (begun_ > 0 && request + 1 < begun_) complain("a request ended that had been replaced");
    if (authenticated && !isProven(request, now)) complain("a request succeeded without proof");
    if (!authenticated && !mayFail(request, now)) complain("a request failed without a cause");
    ended.succeeded |= authenticated;
  }

  bool hasEnded(std::size_t request) const { return requests_.at(request).ends > 0; }

  /// The request that began last, or `none`.
  std::size_t current() const { return begun_ == 0 ? none : begun_ - 1; }
  bool isInProgress(std::size_t request) const { return request != none && !hasEnded(request); }

  std::set<std::size_t> succeeded() const {
    std::set<std::size_t> numbers;
    for (std::size_t i = 0; i < requests_.size(); ++i)
      if (requests_[i].succeeded) numbers.insert(i);
    return numbers;
  }

  static std::string key(std::size_t request) { return "request " + std::to_string(request); }

  /// The first thing that must never happen.
  void complain(const std::string& text) {
    if (!complaint_) complaint_ = text;
  }
  const std::optional<std::string>& complaint() const { return complaint_; }

  static constexpr std::size_t none = static_cast<std::size_t>(-1);

 private:
  struct Request {
    int ends = 0;
    bool succeeded = false;
  };

  bool isProven(std::size_t request, double now) const {
    return agreedOn_.contains(request) || contains(proofs_, now);
  }

  bool mayFail(std::size_t request, double now) const {
    return cancelled_.contains(request) || contains(failures_, now);
  }

  static bool contains(const std::vector<double>& moments, double now) {
    return std::ranges::any_of(moments,
                               [now](double moment) { return std::abs(moment - now) < 1e-6; });
  }

  std::vector<Request> requests_;
  std::size_t begun_ = 0;
  std::vector<double> proofs_;
  std::set<std::size_t> cancelled_;
  std::vector<double> failures_;
  std::set<std::size_t> agreedOn_;
  std::size_t watchAskedFor_ = none;
  std::optional<std::string> complaint_;
};

}  // namespace sentrel
