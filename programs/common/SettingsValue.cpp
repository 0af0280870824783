#include "programs/common/SettingsValue.h"

#include <algorithm>
#include <cmath>

#include "programs/common/CommandLine.h"
#include "programs/common/Numbers.h"
#include "sentrel/settings/PasscodeCipher.h"

namespace sentrel::programs {
namespace {

bool flagOf(const std::string& text) {
  for (const char* yes : {"YES", "yes", "true", "1"})
    if (text == yes) return true;
  for (const char* no : {"NO", "no", "false", "0"})
    if (text == no) return false;
  throw UsageError("\"" + text + "\" is neither YES nor NO");
}

/// The number that the text is, if a setting of that type may be it.
template <class Number>
PropertyList numberFor(SettingsType type, const std::string& text) {
  const auto number = numberOf<Number>(text);
  if (!number || !isProper(type, *number))
    throw UsageError("\"" + text + "\" is not " + nameOf(type));
  return *number;
}

PropertyList listOf(const Words& names) {
  for (const std::string& name : names)
    requireName(name);
  return PropertyList::Array(names.begin(), names.end());
}

const std::string& singleOf(const Words& values) {
  if (values.size() != 1) throw UsageError("expected exactly one VALUE");
  return values.front();
}

bool isWhole(const PropertyList& value) {
  return value.as<bool>() || value.as<std::int64_t>();
}

}  // namespace

const SettingsKey& requireSettingsKey(const std::string& name) {
  if (const SettingsKey* key = findSettingsKey(name)) return *key;
  throw UsageError("there is no setting " + name);
}

PropertyList parseSettingsValue(const SettingsKey& key, const Words& values) {
  if (key.name == settings_keys::passcode)
    throw UsageError("the passcode is stored enciphered; use passcode set");
  switch (key.type) {
    case SettingsType::boolean:
      return flagOf(singleOf(values));
    case SettingsType::real:
      return numberFor<double>(key.type, singleOf(values));
    case SettingsType::integer:
      return numberFor<std::int64_t>(key.type, singleOf(values));
    case SettingsType::string:
      return singleOf(values);
    case SettingsType::stringArray:
      return listOf(values);
    case SettingsType::folderArray:
      break;
  }
  throw UsageError("folder records are not set by hand");
}

const char* nameOf(SettingsType type) {
  switch (type) {
    case SettingsType::boolean:
      return "YES or NO";
    case SettingsType::real:
      return "a number of minutes, none or more";
    case SettingsType::integer:
      return "a whole number";
    case SettingsType::string:
      return "a text";
    case SettingsType::stringArray:
      return "a list of texts";
    case SettingsType::folderArray:
      return "a list of folder records";
  }
  return "";
}

bool isProper(SettingsType type, const PropertyList& value) {
  switch (type) {
    case SettingsType::boolean:
      // A toggled switch holds 0 or 1, which reads the same.
      return isWhole(value) && (value.integerValue() == 0 || value.integerValue() == 1);
    case SettingsType::real:
      return value.isNumber() && std::isfinite(value.doubleValue()) && value.doubleValue() >= 0;
    case SettingsType::integer:
      return isWhole(value);
    case SettingsType::string:
      return value.as<std::string>();
    case SettingsType::stringArray:
    case SettingsType::folderArray:
      return value.as<PropertyList::Array>();
  }
  return false;
}

const std::string& requireName(const std::string& name) {
  if (name.empty()) throw UsageError("an empty name is the name of nothing");
  return name;
}

bool isTypable(std::string_view passcode) {
  return passcode.size() == passcodeLength &&
         std::ranges::all_of(passcode, [](char c) { return c >= '0' && c <= '9'; });
}

void requireTypable(std::string_view passcode) {
  if (!isTypable(passcode))
    throw UsageError("a passcode is exactly " + std::to_string(passcodeLength) +
                     " digits: a prompt takes nothing else, and its owner would be locked out");
}

}  // namespace sentrel::programs
