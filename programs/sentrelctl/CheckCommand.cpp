#include <algorithm>
#include <cstdio>
#include <set>
#include <variant>

#include "device/storage/PlistFiles.h"
#include "programs/common/CommandLine.h"
#include "programs/sentrelctl/Command.h"
#include "sentrel/settings/FolderRecord.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;

/// Collects faults and prints each as one line.
class Report {
 public:
  void fault(std::string_view where, const std::string& what) {
    std::printf("%s: %s\n", std::string(where).c_str(), what.c_str());
    ++count_;
  }
  ExitCode verdict() const {
    if (count_ == 0) std::puts("no fault found");
    return count_ == 0 ? programs::exitDone : programs::exitNo;
  }

 private:
  int count_ = 0;
};

const char* nameOf(SettingsType type) {
  switch (type) {
    case SettingsType::boolean:
      return "YES or NO";
    case SettingsType::real:
      return "a number";
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

bool isWhole(const PropertyList& value) {
  return value.as<bool>() || value.as<std::int64_t>();
}

/// A toggled switch holds 0 or 1, which reads the same.
bool isSwitch(const PropertyList& value) {
  return isWhole(value) && (value.integerValue() == 0 || value.integerValue() == 1);
}

bool matches(SettingsType type, const PropertyList& value) {
  switch (type) {
    case SettingsType::boolean:
      return isSwitch(value);
    case SettingsType::real:
      return value.isNumber();
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

void checkTexts(Report& report, std::string_view key, const PropertyList::Array& elements) {
  std::set<std::string> seen;
  for (const PropertyList& element : elements) {
    const auto* text = element.as<std::string>();
    if (!text)
      report.fault(key, "holds " + describe(element) + ", which is no text and protects nothing");
    else if (!seen.insert(*text).second)
      report.fault(key, "holds \"" + *text + "\" more than once");
  }
}

bool isNamedIcon(const PropertyList& icon) {
  return displayNameOf(icon) && bundleIdentifierOf(icon);
}

bool isRecord(const PropertyList& record) {
  const auto* icons = iconsOf(record);
  return displayNameOf(record) && icons && std::ranges::all_of(*icons, isNamedIcon);
}

void checkFolders(Report& report, std::string_view key, const PropertyList::Array& records) {
  for (std::size_t i = 0; i < records.size(); ++i)
    if (!isRecord(records[i]))
      report.fault(key, "record " + std::to_string(i + 1) +
                            " lacks a name, its icons, or an icon's name and identifier");
}

void checkEntry(Report& report, const std::string& key, const PropertyList& value) {
  const SettingsKey* known = findSettingsKey(key);
  if (!known) return report.fault(key, "is no setting; nothing reads it");
  if (!matches(known->type, value))
    return report.fault(
        key, "holds " + describe(value) + " where " + nameOf(known->type) + " is expected");
  if (known->type == SettingsType::stringArray)
    checkTexts(report, key, *value.as<PropertyList::Array>());
  if (known->type == SettingsType::folderArray)
    checkFolders(report, key, *value.as<PropertyList::Array>());
}

void checkTogether(Report& report, const PropertyList::Dictionary& file) {
  const PropertyList* onlyPasscode = find(file, settings_keys::usePasscodeOnly);
  const auto* passcode = find<std::string>(file, settings_keys::passcode);
  if (onlyPasscode && onlyPasscode->boolValue() && (!passcode || passcode->empty()))
    report.fault(settings_keys::usePasscodeOnly, "has no effect: no passcode is stored");
  if (passcode && !passcode->empty() && !SNSettings::sharedSettings().canDecryptString(*passcode))
    report.fault(settings_keys::passcode,
                 "is no enciphered passcode: nothing that is typed is right");
}

ExitCode check(const Context& context, const Arguments& arguments) {
  const std::string file = arguments.empty()
                               ? context.root.hostPath(std::string(settingsFilePath)).value_or("")
                               : arguments[0];
  const auto reading = storage::readDictionaryFile(file);
  Report report;
  if (const auto* fault = std::get_if<storage::PropertyListFault>(&reading)) {
    report.fault(file, storage::describe(*fault) + "; every setting reads as absent");
  } else {
    const auto& entries = std::get<PropertyList::Dictionary>(reading);
    for (const auto& [key, value] : entries)
      checkEntry(report, key, value);
    checkTogether(report, entries);
  }
  return report.verdict();
}

constexpr Command commands[] = {
    {"check", "[FILE]", "says what is wrong with a settings file; exit code 1 for any fault", 0, 1,
     check},
};

}  // namespace

CommandTable checkCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
