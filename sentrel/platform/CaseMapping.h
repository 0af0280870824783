#pragma once

#include <string>
#include <string_view>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// Unicode's case mappings of whole texts, the same in every language. A mapping may change a
/// text's length. Text that is not UTF-8 comes back unchanged. May be called from any thread.
class SENTREL_API CaseMapping {
 public:
  virtual ~CaseMapping() = default;

  virtual std::string lowercased(std::string_view text) const = 0;
  virtual std::string uppercased(std::string_view text) const = 0;
};

}  // namespace sentrel
