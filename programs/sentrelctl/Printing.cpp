#include "programs/sentrelctl/Printing.h"

#include <cstdio>

#include "programs/common/Json.h"
#include "programs/common/OneLine.h"
#include "programs/common/SettingsValue.h"

namespace sentrel::sentrelctl {

PropertyList presented(std::string_view key, const PropertyList& value) {
  const SettingsKey* known = findSettingsKey(key);
  const bool isSwitch =
      known && known->type == SettingsType::boolean && programs::isProper(known->type, value);
  return isSwitch ? PropertyList(value.boolValue()) : value;
}

std::string shown(const PropertyList& value) {
  return programs::oneLine(describe(value));
}

void print(const Context& context, const PropertyList& value) {
  const auto* elements = value.as<PropertyList::Array>();
  if (context.line.json)
    std::puts(programs::json(value).c_str());
  else if (!elements)
    std::puts(shown(value).c_str());
  else
    for (const PropertyList& element : *elements)
      std::puts(shown(element).c_str());
}

}  // namespace sentrel::sentrelctl
