#include "sentrel/settings/ProtectedServices.h"

#include <algorithm>
#include <utility>

#include "sentrel/platform/CaseMapping.h"

namespace sentrel {
namespace {

/// More services than any phone has. Past this the answers are forgotten, so that made-up names
/// cannot fill the memory.
constexpr std::size_t mostAnswers = 4096;

}  // namespace

ProtectedServices::ProtectedServices(const ProtectedItems& applications,
                                     const CaseMapping& caseMapping)
    : caseMapping_(&caseMapping) {
  prefixes_.reserve(applications.size());
  for (const std::string& application : applications)
    prefixes_.push_back(caseMapping.lowercased(application));
  keepDecidingPrefixes();
}

/// In sorted order a prefix stands right before everything that begins with it.
void ProtectedServices::keepDecidingPrefixes() {
  std::ranges::sort(prefixes_);
  std::vector<std::string> deciding;
  for (std::string& prefix : prefixes_)
    if (deciding.empty() || !prefix.starts_with(deciding.back()))
      deciding.push_back(std::move(prefix));
  prefixes_ = std::move(deciding);
}

bool ProtectedServices::contains(std::string_view service) {
  if (const auto index = asked_.find(service)) return answers_[*index];
  const bool answer = !prefixes_.empty() && beginsWithPrefix(caseMapping_->lowercased(service));
  remember(service, answer);
  return answer;
}

bool ProtectedServices::beginsWithPrefix(std::string_view lowercasedService) const noexcept {
  // Anything between a prefix and the service in sorted order would begin with the prefix too.
  const auto after = std::ranges::upper_bound(prefixes_, lowercasedService);
  return after != prefixes_.begin() && lowercasedService.starts_with(*std::prev(after));
}

void ProtectedServices::remember(std::string_view service, bool answer) {
  if (answers_.size() == mostAnswers) {
    asked_ = {};
    answers_.clear();
  }
  asked_.add(service);
  answers_.push_back(answer);
}

}  // namespace sentrel
