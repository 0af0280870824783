#include <algorithm>
#include <cstdio>
#include <optional>
#include <set>
#include <string>
#include <variant>

#include "device/storage/OpenSslCryptography.h"
#include "device/storage/PlistFiles.h"
#include "device/storage/PropertyListCoding.h"
#include "programs/common/OneLine.h"
#include "programs/common/SettingsValue.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "sentrel/settings/FolderRecord.h"
#include "sentrel/settings/PasscodeCipher.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;

/// Collects faults and prints each as one line.
class Report {
 public:
  void fault(std::string_view where, const std::string& what) {
    std::puts(programs::oneLine(std::string(where) + ": " + what).c_str());
    ++count_;
  }
  ExitCode verdict() const {
    if (count_ == 0) std::puts("no fault found");
    return count_ == 0 ? programs::exitDone : programs::exitNo;
  }

 private:
  int count_ = 0;
};

void checkTexts(Report& report, std::string_view key, const PropertyList::Array& elements) {
  std::set<std::string> seen;
  for (const PropertyList& element : elements) {
    const auto* text = element.as<std::string>();
    if (!text)
      report.fault(key, "holds " + describe(element) + ", which is no text and protects nothing");
    else if (text->empty())
      report.fault(key, "holds an empty name, which is the name of nothing");
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
  if (!programs::isProper(known->type, value))
    return report.fault(key, "holds " + describe(value) + " where " +
                                 programs::nameOf(known->type) + " is expected");
  if (known->type == SettingsType::stringArray)
    checkTexts(report, key, *value.as<PropertyList::Array>());
  if (known->type == SettingsType::folderArray)
    checkFolders(report, key, *value.as<PropertyList::Array>());
}

/// Whether the stored form is that of a passcode that can be typed; none where it is of none.
std::optional<bool> isTypableWhenDeciphered(const std::string& stored) {
  const storage::OpenSslCryptography cryptography;
  const auto enciphered = cryptography.decodeBase64(stored);
  if (!enciphered) return std::nullopt;
  auto plain = sn__AES256DecryptWithKey(cryptography, *enciphered, passcodeCipherKey);
  if (!plain) return std::nullopt;
  const bool isTypable =
      programs::isTypable({reinterpret_cast<const char*>(plain->data()), plain->size()});
  cryptography.wipe(*plain);
  return isTypable;
}

void checkPasscode(Report& report, const std::string& stored) {
  const auto isTypable = isTypableWhenDeciphered(stored);
  if (!isTypable)
    report.fault(settings_keys::passcode,
                 "is no enciphered passcode: nothing that is typed is right");
  else if (!*isTypable)
    report.fault(settings_keys::passcode,
                 "is not of " + std::to_string(passcodeLength) + " digits: no prompt takes it");
}

void checkTogether(Report& report, const PropertyList::Dictionary& file) {
  const PropertyList* onlyPasscode = find(file, settings_keys::usePasscodeOnly);
  const auto* passcode = find<std::string>(file, settings_keys::passcode);
  const bool hasPasscode = passcode && !passcode->empty();
  if (onlyPasscode && onlyPasscode->boolValue() && !hasPasscode)
    report.fault(settings_keys::usePasscodeOnly, "has no effect: no passcode is stored");
  if (hasPasscode) checkPasscode(report, *passcode);
}

void checkFile(Report& report, const std::string& path) {
  const auto reading = storage::readDictionaryFile(path);
  if (const auto* fault = std::get_if<storage::PropertyListFault>(&reading))
    return report.fault(path, storage::describe(*fault) + "; every setting reads as absent");
  const auto& entries = std::get<PropertyList::Dictionary>(reading);
  for (const auto& [key, value] : entries)
    checkEntry(report, key, value);
  checkTogether(report, entries);
  if (!storage::serializePropertyList(entries))
    report.fault(path, "is too large to be written again; no setting can be changed");
}

ExitCode check(const Context& context, const Arguments& arguments) {
  Report report;
  checkFile(report, arguments.empty() ? settingsFileOnThisMachine(context) : arguments[0]);
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
