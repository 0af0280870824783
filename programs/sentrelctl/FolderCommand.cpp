#include <cstdio>
#include <utility>

#include "programs/common/CommandLine.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/Folders.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "sentrel/settings/FolderRecord.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;
using programs::UsageError;

ExitCode list() {
  for (const PropertyList& record : SNSettings::sharedSettings().enabledFolders()) {
    std::printf("%s:", nameOf(record).c_str());
    if (const auto* icons = iconsOf(record))
      for (const PropertyList& icon : *icons) {
        const std::string* identifier = bundleIdentifierOf(icon);
        std::printf(" %s", identifier ? identifier->c_str() : describe(icon).c_str());
      }
    std::puts("");
  }
  return programs::exitDone;
}

/// The folder as it is now, or else as it was when it was stored.
ExitCode unprotect(const Context& context, const std::string& bundleIdentifier) {
  SNSettings& settings = SNSettings::sharedSettings();
  const auto folder = folderOf(bundleIdentifier);
  if (folder && settings.matchedFolderDataIndex(*folder) >= 0) {
    requireWritten(settings.removeFromFolders(*folder));
    return programs::exitDone;
  }
  PropertyList::Array records = settings.enabledFolders();
  const auto holds = [&](const PropertyList& record) {
    return holdsApplication(record, bundleIdentifier);
  };
  if (std::erase_if(records, holds) == 0) {
    std::fprintf(stderr, "sentrelctl: the folder of %s is not protected\n",
                 bundleIdentifier.c_str());
    return programs::exitNo;
  }
  changeSetting(context, settings_keys::folders, std::move(records));
  return programs::exitDone;
}

ExitCode folders(const Context& context, const Arguments& arguments) {
  const std::string& what = arguments[0];
  const bool hasApplication = arguments.size() == 2;
  readSettingsFile(context);
  if (what == "list" && !hasApplication) return list();
  if (what != "reset") requireListOrNone(context, settings_keys::folders);
  SNSettings& settings = SNSettings::sharedSettings();
  if (what == "reset" && !hasApplication) {
    requireWritten(settings.resetAllFolders());
  } else if (what == "protect" && hasApplication) {
    requireWritten(settings.addToFolders(requireFolderOf(arguments[1])));
  } else if (what == "unprotect" && hasApplication) {
    return unprotect(context, arguments[1]);
  } else {
    throw UsageError("expected folders list|reset, or folders protect|unprotect BUNDLE-ID");
  }
  return programs::exitDone;
}

constexpr Command commands[] = {
    {"folders", "list|reset", "lists the protected folders, or protects none", 1, 2, folders},
    {"folders", "protect|unprotect BUNDLE-ID", "the folder that the application lies in", 1, 2,
     folders},
};

}  // namespace

std::span<const Command> folderCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
