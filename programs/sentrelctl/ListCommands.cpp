#include <algorithm>

#include "programs/common/CommandLine.h"
#include "programs/common/SettingsValue.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/SettingsFile.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;
using programs::UsageError;

const SettingsKey& requireList(const std::string& name) {
  const SettingsKey& key = programs::requireSettingsKey(name);
  if (key.type != SettingsType::stringArray) throw UsageError(name + " is no list of texts");
  return key;
}

ExitCode add(const Context& context, const Arguments& arguments) {
  const SettingsKey& key = requireList(arguments[0]);
  const SettingsChange change(context);
  PropertyList::Array elements = requireListOrNone(context, key.name);
  const PropertyList item = programs::requireName(arguments[1]);
  if (std::ranges::find(elements, item) == elements.end()) elements.push_back(item);
  changeSetting(context, key.name, std::move(elements));
  return programs::exitDone;
}

ExitCode drop(const Context& context, const Arguments& arguments) {
  const SettingsKey& key = requireList(arguments[0]);
  const SettingsChange change(context);
  PropertyList::Array elements = requireListOrNone(context, key.name);
  if (std::erase(elements, PropertyList(arguments[1])) == 0) return programs::exitNo;
  changeSetting(context, key.name, std::move(elements));
  return programs::exitDone;
}

constexpr Command commands[] = {
    {"add", "KEY ITEM", "adds ITEM to a list that does not hold it", 2, 2, add},
    {"drop", "KEY ITEM", "drops ITEM from a list; exit code 1 where it is not in it", 2, 2, drop},
};

}  // namespace

CommandTable listCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
