#include <cstdio>
#include <filesystem>

#include "device/storage/PrivateFolders.h"
#include "programs/common/CommandLine.h"
#include "programs/common/OneLine.h"
#include "programs/common/SettingsValue.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/Printing.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "sentrel/Process.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel::sentrelctl {
namespace {

using programs::anyNumber;
using programs::ExitCode;
using programs::ProgramError;
using programs::UsageError;

ExitCode create(const Context& context, const Arguments&) {
  const std::string path(settingsFilePath);
  const auto hostPath = context.root().hostPath(path);
  if (!hostPath) throw ProgramError("the device root cannot hold " + path);
  PropertyListFiles& files = *Process::current().platform().propertyListFiles;
  const std::string folder = std::filesystem::path(*hostPath).parent_path();
  const auto alone = storage::makePrivateFolders(folder) ? files.lock(path) : nullptr;
  if (std::filesystem::exists(std::filesystem::symlink_status(*hostPath)))
    throw ProgramError("there is a settings file already: " + *hostPath);
  if (!alone || !files.writeDictionary(path, {}))
    throw ProgramError("could not write " + *hostPath);
  context.changesFile = true;
  SNUtils::postDarwinNotification(notifications::settingsChanged);
  return programs::exitDone;
}

void printEntry(const std::string& key, const PropertyList& value) {
  const std::string name = programs::oneLine(key);
  const auto* elements = value.as<PropertyList::Array>();
  if (!elements)
    return static_cast<void>(std::printf("%s = %s\n", name.c_str(), shown(value).c_str()));
  std::printf("%s =\n", name.c_str());
  for (const PropertyList& element : *elements)
    std::printf("  %s\n", shown(element).c_str());
}

ExitCode show(const Context& context, const Arguments&) {
  PropertyList::Dictionary file = readSettingsFile(context);
  for (auto& [key, value] : file)
    value = presented(key, value);
  if (context.line.json) {
    print(context, file);
    return programs::exitDone;
  }
  for (const auto& [key, value] : file)
    printEntry(key, value);
  return programs::exitDone;
}

/// What the file holds under a key, or null. An entry that is no setting can be looked at and
/// removed like any other; what is neither a setting nor in the file is a slip of the pen.
const PropertyList* entryOf(const PropertyList::Dictionary& file, const std::string& key) {
  const PropertyList* value = find(file, key);
  if (!value) programs::requireSettingsKey(key);
  return value;
}

ExitCode get(const Context& context, const Arguments& arguments) {
  const auto file = readSettingsFile(context);
  const PropertyList* value = entryOf(file, arguments[0]);
  if (!value) return programs::exitNo;
  print(context, presented(arguments[0], *value));
  return programs::exitDone;
}

ExitCode set(const Context& context, const Arguments& arguments) {
  const SettingsKey& key = programs::requireSettingsKey(arguments[0]);
  const Arguments values(arguments.begin() + 1, arguments.end());
  const PropertyList value = programs::parseSettingsValue(key, values);
  const SettingsChange change(context);
  changeSetting(context, key.name, value);
  return programs::exitDone;
}

/// Whether it is one of a switch's two states, so that there is another one.
bool isOffOrOn(const PropertyList& value) {
  return value.isNumber() && (value.doubleValue() == 0 || value.doubleValue() == 1);
}

ExitCode toggle(const Context& context, const Arguments& arguments) {
  const SettingsKey& key = programs::requireSettingsKey(arguments[0]);
  if (key.type != SettingsType::boolean)
    throw UsageError(arguments[0] + " is no switch that could be toggled");
  const SettingsChange change(context);
  SNSettings& settings = SNSettings::sharedSettings();
  const auto before = settings.valueForKey(key.name);
  if (!before || !isOffOrOn(*before))
    throw ProgramError(arguments[0] + " holds no YES or NO that could be toggled; use set");
  requireWritten(settings.toggleValue(key.name));
  std::printf("%s\n", before->boolValue() ? "NO" : "YES");
  return programs::exitDone;
}

ExitCode remove(const Context& context, const Arguments& arguments) {
  const SettingsChange change(context);
  if (!entryOf(readSettingsFile(context), arguments[0])) return programs::exitNo;
  changeSetting(context, arguments[0], std::nullopt);
  return programs::exitDone;
}

constexpr Command commands[] = {
    {"create", "", "makes an empty settings file where there is none", 0, 0, create},
    {"show", "", "prints every entry of the file", 0, 0, show},
    {"get", "KEY", "prints the value under KEY alone; exit code 1 where there is none", 1, 1, get},
    {"set", "KEY VALUE...", "stores VALUE with the key's type; a list takes several", 1, anyNumber,
     set},
    {"toggle", "KEY", "flips a switch and prints its new state", 1, 1, toggle},
    {"remove", "KEY", "removes the entry; exit code 1 where there is none", 1, 1, remove},
};

}  // namespace

CommandTable storeCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
