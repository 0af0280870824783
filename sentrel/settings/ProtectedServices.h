#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sentrel/settings/ProtectedItems.h"
#include "sentrel/settings/TextTable.h"

namespace sentrel {

class CaseMapping;

/// The system services of the protected applications: those whose names begin with an application's
/// identifier, in any case of letters.
///
/// The same few services are asked about again and again, so each answer is worked out once.
class ProtectedServices {
 public:
  ProtectedServices() = default;

  /// `caseMapping` outlives this.
  ProtectedServices(const ProtectedItems& applications, const CaseMapping& caseMapping);

  /// Allocates nothing for a service that was asked about before.
  bool contains(std::string_view service);

 private:
  void keepDecidingPrefixes();
  bool beginsWithPrefix(std::string_view lowercasedService) const noexcept;
  void remember(std::string_view service, bool answer);

  const CaseMapping* caseMapping_ = nullptr;

  /// Sorted, and none of them begins with another one.
  std::vector<std::string> prefixes_;

  /// What was asked about, and the answer to each in the same order.
  TextTable asked_;
  std::vector<char> answers_;
};

}  // namespace sentrel
