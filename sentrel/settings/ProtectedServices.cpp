#include "sentrel/settings/ProtectedServices.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "sentrel/platform/Utf8.h"

namespace sentrel {
namespace {

/// How many bytes the text has before the first one that is not UTF-8.
std::size_t sizeOfUtf8(std::string_view text) noexcept {
  std::size_t size = 0;
  while (size < text.size()) {
    const std::size_t length = firstUtf8Character(text.substr(size)).length;
    if (length == 0) break;
    size += length;
  }
  return size;
}

/// The mapping leaves a text that is not UTF-8 as it is, so it is given what lies between the
/// stray bytes: one of these is not to take a service out of its application.
std::string lowercased(std::string_view text, const CaseMapping& caseMapping) {
  std::string lower;
  while (!text.empty()) {
    const std::size_t size = sizeOfUtf8(text);
    lower += caseMapping.lowercased(text.substr(0, size));
    if (size < text.size()) lower += text[size];
    text.remove_prefix(std::min(size + 1, text.size()));
  }
  return lower;
}

}  // namespace

ProtectedServices::ProtectedServices(const ProtectedItems& applications,
                                     const CaseMapping& caseMapping) {
  prefixes_.reserve(applications.size());
  for (const std::string& application : applications)
    prefixes_.push_back(lowercased(application, caseMapping));
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

bool ProtectedServices::contains(std::string_view service, const CaseMapping& caseMapping) {
  if (const auto index = asked_.find(service)) return answers_[*index];
  return workOut(service, caseMapping);
}

bool ProtectedServices::workOut(std::string_view service, const CaseMapping& caseMapping) {
  const bool answer = beginsWithPrefix(lowercased(service, caseMapping));
  if (service.size() <= longestKept) keep(service, answer);
  return answer;
}

bool ProtectedServices::beginsWithPrefix(std::string_view lowercasedService) const noexcept {
  // Anything between a prefix and the service in sorted order would begin with the prefix too.
  const auto after = std::ranges::upper_bound(prefixes_, lowercasedService);
  return after != prefixes_.begin() && lowercasedService.starts_with(*std::prev(after));
}

void ProtectedServices::keep(std::string_view service, bool answer) {
  if (asked_.size() == mostAnswers) asked_ = {};
  asked_.add(service);
  answers_[asked_.size() - 1] = answer;
}

}  // namespace sentrel
