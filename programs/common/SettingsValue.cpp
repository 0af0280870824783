#include "programs/common/SettingsValue.h"

#include <charconv>

#include "programs/common/CommandLine.h"

namespace sentrel::programs {
namespace {

using Words = std::vector<std::string>;

template <class Number>
Number numberOf(const std::string& text, const char* kind) {
  Number number{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end)
    throw UsageError("\"" + text + "\" is not " + kind);
  return number;
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

PropertyList parseSettingsValue(SettingsType type, const Words& values) {
  switch (type) {
    case SettingsType::boolean:
      return flagOf(singleOf(values));
    case SettingsType::real:
      return numberOf<double>(singleOf(values), "a number");
    case SettingsType::integer:
      return numberOf<std::int64_t>(singleOf(values), "a whole number");
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
