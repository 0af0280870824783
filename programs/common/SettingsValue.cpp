#include "programs/common/SettingsValue.h"

#include "programs/common/CommandLine.h"
#include "programs/common/Numbers.h"

namespace sentrel::programs {
namespace {

template <class Number>
Number requireNumber(const std::string& text, const char* kind) {
  if (const auto number = numberOf<Number>(text)) return *number;
  throw UsageError("\"" + text + "\" is not " + kind);
}

bool flagOf(const std::string& text) {
  for (const char* yes : {"YES", "yes", "true", "1"})
    if (text == yes) return true;
  for (const char* no : {"NO", "no", "false", "0"})
    if (text == no) return false;
  throw UsageError("\"" + text + "\" is neither YES nor NO");
}

const std::string& singleOf(const Words& values) {
  if (values.size() != 1) throw UsageError("expected exactly one VALUE");
  return values.front();
}

}  // namespace

const SettingsKey& requireSettingsKey(const std::string& name) {
  if (const SettingsKey* key = findSettingsKey(name)) return *key;
  throw UsageError("there is no setting " + name);
}

PropertyList parseSettingsValue(SettingsType type, const Words& values) {
  switch (type) {
    case SettingsType::boolean:
      return flagOf(singleOf(values));
    case SettingsType::real:
      return requireNumber<double>(singleOf(values), "a number");
    case SettingsType::integer:
      return requireNumber<std::int64_t>(singleOf(values), "a whole number");
    case SettingsType::string:
      return singleOf(values);
    case SettingsType::stringArray:
      return PropertyList::Array(values.begin(), values.end());
    case SettingsType::folderArray:
      break;
  }
  throw UsageError("folder records are not set by hand");
}

}  // namespace sentrel::programs
