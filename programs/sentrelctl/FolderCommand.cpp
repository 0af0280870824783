#include <algorithm>
#include <cstdio>
#include <utility>

#include "programs/common/CommandLine.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/Folders.h"
#include "programs/sentrelctl/Printing.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "sentrel/settings/FolderRecord.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;
using programs::UsageError;

/// Its name, and the applications in it.
PropertyList lineOf(const PropertyList& record) {
  std::string line = nameOf(record) + ":";
  if (const auto* icons = iconsOf(record))
    for (const PropertyList& icon : *icons) {
      const std::string* identifier = bundleIdentifierOf(icon);
      line += " " + (identifier ? *identifier : describe(icon));
    }
  return line;
}

ExitCode list(const Context& context) {
  PropertyList::Array records = SNSettings::sharedSettings().enabledFolders();
  if (!context.line.json) std::ranges::transform(records, records.begin(), lineOf);
  print(context, std::move(records));
  return programs::exitDone;
}

ExitCode unprotect(const Context& context, const std::string& bundleIdentifier) {
  const PropertyList folder = requireFolderOf(bundleIdentifier);
  const SettingsChange change(context);
  SNSettings& settings = SNSettings::sharedSettings();
  if (settings.matchedFolderDataIndex(folder) < 0) {
    std::fprintf(stderr, "sentrelctl: the folder of %s is not protected\n",
                 bundleIdentifier.c_str());
    return programs::exitNo;
  }
  requireWritten(settings.removeFromFolders(folder));
  return programs::exitDone;
}

/// The first record of that name: also of a folder that is no longer as it was when it was stored.
ExitCode forget(const Context& context, const std::string& name) {
  const SettingsChange change(context);
  PropertyList::Array records = SNSettings::sharedSettings().enabledFolders();
  const auto record = std::ranges::find(records, name, nameOf);
  if (record == records.end()) return programs::exitNo;
  records.erase(record);
  changeSetting(context, settings_keys::folders, std::move(records));
  return programs::exitDone;
}

ExitCode change(const Context& context, const std::string& what, const std::string& item) {
  requireListOrNone(context, settings_keys::folders);
  if (what == "unprotect") return unprotect(context, item);
  if (what == "forget") return forget(context, item);
  if (what != "protect") throw UsageError("expected folders protect, unprotect or forget");
  const PropertyList folder = requireFolderOf(item);
  const SettingsChange change(context);
  requireWritten(SNSettings::sharedSettings().addToFolders(folder));
  return programs::exitDone;
}

ExitCode folders(const Context& context, const Arguments& arguments) {
  readSettingsFile(context);
  if (arguments.size() == 2) return change(context, arguments[0], arguments[1]);
  if (arguments[0] == "list") return list(context);
  if (arguments[0] != "reset") throw UsageError("expected folders list or reset");
  const SettingsChange change(context);
  requireWritten(SNSettings::sharedSettings().resetAllFolders());
  return programs::exitDone;
}

constexpr Command commands[] = {
    {"folders", "list|reset", "lists the protected folders, or protects none", 1, 2, folders},
    {"folders", "protect|unprotect BUNDLE-ID", "the folder that the application lies in", 1, 2,
     folders},
    {"folders", "forget NAME", "protects the first stored folder of that name no longer", 1, 2,
     folders},
};

}  // namespace

CommandTable folderCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
