#include "programs/sentrelctl/SettingsFile.h"

#include <utility>
#include <variant>

#include "device/storage/PlistFiles.h"
#include "programs/common/CommandLine.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel::sentrelctl {

using programs::ProgramError;
using programs::UsageError;

namespace {

std::string settingsFileOnThisMachine(const Context& context) {
  return context.root.hostPath(std::string(settingsFilePath)).value_or("");
}

}  // namespace

const SettingsKey& requireKey(const std::string& name) {
  if (const SettingsKey* key = findSettingsKey(name)) return *key;
  throw UsageError("there is no setting " + name);
}

PropertyList::Dictionary readSettingsFile(const Context& context) {
  const std::string path = settingsFileOnThisMachine(context);
  auto reading = storage::readDictionaryFile(path);
  if (auto* file = std::get_if<PropertyList::Dictionary>(&reading)) return std::move(*file);
  const auto& fault = std::get<storage::PropertyListFault>(reading);
  const bool missing = fault.kind == storage::PropertyListFault::Kind::missing;
  throw ProgramError(path + ": " + storage::describe(fault) +
                     (missing ? "; make it with \"sentrelctl create\"" : ""));
}

void changeSetting(const Context& context, std::string_view key,
                   std::optional<PropertyList> value) {
  readSettingsFile(context);
  if (!SNSettings::sharedSettings().updateSettingsData(key, std::move(value),
                                                       /*postNotification=*/true))
    throw ProgramError(settingsFileOnThisMachine(context) +
                       ": could not be written with that value; it is as it was");
}

void requireWritten(bool written) {
  if (!written) throw ProgramError("the settings file could not be written; it is as it was");
}

std::string shown(const PropertyList& value) {
  const auto* elements = value.as<PropertyList::Array>();
  if (!elements) return describe(value);
  std::string text;
  for (const PropertyList& element : *elements) {
    if (!text.empty()) text += ", ";
    text += describe(element);
  }
  return text;
}

}  // namespace sentrel::sentrelctl
