#pragma once

#include <string>
#include <string_view>

#include "sentrel/platform/CaseMapping.h"

namespace sentrel::storage {

class GLibCaseMapping final : public CaseMapping {
 public:
  std::string lowercased(std::string_view text) const override;
  std::string uppercased(std::string_view text) const override;
};

}  // namespace sentrel::storage
