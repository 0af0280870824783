#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace sentrel::sim {

/// What a caller's completion was called with.
struct Outcome {
  bool authenticated;
  bool allowed;
};

/// "allowed" (nobody was asked), "authenticated" or "denied".
std::string describe(const Outcome& outcome);

/// One question that the hooking side put to the lock controller, and every answer it got.
struct Request {
  std::string what;
  std::vector<Outcome> outcomes;
};

/// "pending" before the answer; more than one answer, which never should be, shows each.
std::string describe(const Request& request);

/// Everything that was asked since the script began. References stay valid.
using Requests = std::deque<Request>;

}  // namespace sentrel::sim
