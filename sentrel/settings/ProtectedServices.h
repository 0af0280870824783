#pragma once

#include <bitset>
#include <string>
#include <string_view>
#include <vector>

#include "sentrel/platform/CaseMapping.h"
#include "sentrel/settings/ProtectedItems.h"
#include "sentrel/settings/TextTable.h"

namespace sentrel {

/// The system services of the protected applications: those whose names begin with an application's
/// identifier, in any case of letters.
///
/// The same few services are asked about again and again, so each answer is worked out once.
class ProtectedServices {
 public:
  ProtectedServices() = default;
  ProtectedServices(const ProtectedItems& applications, const CaseMapping& caseMapping);

  /// Allocates nothing for a service that was asked about before.
  bool contains(std::string_view service, const CaseMapping& caseMapping);

 private:
  // More services than a phone has, and longer names: made-up ones cannot fill the memory.
  static constexpr std::size_t mostAnswers = 4096;
  static constexpr std::size_t longestKept = 256;

  void keepDecidingPrefixes();

  /// The answer for a service that was not asked about before. A function of its own, so that the
  /// usual way needs no room for texts.
  [[gnu::noinline]] bool workOut(std::string_view service, const CaseMapping& caseMapping);
  bool beginsWithPrefix(std::string_view lowercasedService) const noexcept;
  void keep(std::string_view service, bool answer);

  /// Sorted, and none of them begins with another one.
  std::vector<std::string> prefixes_;

  /// What was asked about, and the answer to each under its index.
  TextTable asked_;
  std::bitset<mostAnswers> answers_;
};

}  // namespace sentrel
