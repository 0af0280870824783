#include "programs/sim/Requests.h"

namespace sentrel::sim {

std::string describe(const Outcome& outcome) {
  if (!outcome.allowed) return outcome.authenticated ? "authenticated yet denied" : "denied";
  return outcome.authenticated ? "authenticated" : "allowed";
}

std::string describe(const Request& request) {
  if (request.outcomes.empty()) return "pending";
  std::string text;
  for (const Outcome& outcome : request.outcomes)
    text += (text.empty() ? "" : " and then ") + describe(outcome);
  return text;
}

}  // namespace sentrel::sim
