#include <cstdio>
#include <stdexcept>

#include "programs/common/CommandLine.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;
using programs::ProgramError;
using programs::UsageError;

/// The record of the folder that the application lies in, as the home screen sees it now.
PropertyList folderOf(const std::string& bundleIdentifier) {
  const auto data = SNUtils::protectedFolderData(bundleIdentifier);
  const PropertyList* record = data ? find(*data, folder_keys::allIcons) : nullptr;
  if (!record)
    throw ProgramError("the home screen knows of no folder that holds " + bundleIdentifier);
  return *record;
}

std::string shownIcon(const PropertyList& icon) {
  const auto* entries = icon.as<PropertyList::Dictionary>();
  const auto* identifier =
      entries ? find<std::string>(*entries, folder_keys::bundleIdentifier) : nullptr;
  return identifier ? *identifier : describe(icon);
}

ExitCode list() {
  for (const PropertyList& record : SNSettings::sharedSettings().enabledFolders()) {
    const auto* entries = record.as<PropertyList::Dictionary>();
    const auto* name = entries ? find<std::string>(*entries, folder_keys::displayName) : nullptr;
    std::printf("%s:", name ? name->c_str() : "?");
    if (const auto* icons =
            entries ? find<PropertyList::Array>(*entries, folder_keys::allIcons) : nullptr)
      for (const PropertyList& icon : *icons)
        std::printf(" %s", shownIcon(icon).c_str());
    std::puts("");
  }
  return programs::exitDone;
}

ExitCode unprotect(const std::string& bundleIdentifier) {
  try {
    requireWritten(SNSettings::sharedSettings().removeFromFolders(folderOf(bundleIdentifier)));
  } catch (const std::out_of_range&) {
    std::fprintf(stderr, "sentrelctl: the folder of %s is not protected\n",
                 bundleIdentifier.c_str());
    return programs::exitNo;
  }
  return programs::exitDone;
}

ExitCode folders(const Context& context, const Arguments& arguments) {
  const std::string& what = arguments[0];
  const bool hasApplication = arguments.size() == 2;
  readSettingsFile(context);
  if (what == "list" && !hasApplication) return list();
  SNSettings& settings = SNSettings::sharedSettings();
  if (what == "reset" && !hasApplication) {
    requireWritten(settings.resetAllFolders());
  } else if (what == "protect" && hasApplication) {
    requireWritten(settings.addToFolders(folderOf(arguments[1])));
  } else if (what == "unprotect" && hasApplication) {
    return unprotect(arguments[1]);
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
