#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "programs/common/CommandLine.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/Explain.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;
using programs::UsageError;

/// One kind of item: how it is called here, whether it is configured, and whether it needs
/// authentication now.
struct Kind {
  std::string_view name;
  const char* list;
  bool (*isListed)(const SNSettings&, std::string_view item);
  bool (*isProtected)(const SNSettings&, std::string_view item);
};

constexpr Kind kinds[] = {
    {"app", "the protected applications",
     [](const SNSettings& s, std::string_view i) {
       return s.isAppProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isAppProtected(i); }},
    {"notifications", "the applications with protected notifications",
     [](const SNSettings& s, std::string_view i) {
       return s.isNotificationsAppProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isNotificationsAppProtected(i); }},
    {"pane", "the protected settings panes",
     [](const SNSettings& s, std::string_view i) {
       return s.isSpecifierProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isSpecifierProtected(i); }},
    {"switch", "the protected switches",
     [](const SNSettings& s, std::string_view i) {
       return s.isFlipSwitchProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isFlipSwitchProtected(i); }},
    {"control", "the protected control-centre items",
     [](const SNSettings& s, std::string_view i) {
       return s.isControlCenterItemProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isControlCenterItemProtected(i); }},
    {"service", "the protected applications, one of which it belongs to",
     [](const SNSettings& s, std::string_view i) {
       return s.isSystemServiceProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isSystemServiceProtected(i); }},
};

ExitCode explainItem(const Kind& kind, const std::string& item) {
  const SNSettings& settings = SNSettings::sharedSettings();
  if (kind.name == "pane" && item == SNUtils::localizedString("Sentrel"))
    step("own pane?", "yes: always protected, whatever follows");
  explainActivity();
  if (kind.name == "switch")
    step("extension installed?", SNUtils::isFlipSwitchInstalled() ? "yes" : "no");
  explainSession(item);
  step("in the set?", yesOrNo(kind.isListed(settings, item)) + ": " + kind.list);
  return conclude(kind.isProtected(settings, item));
}

/// The kinds that are explained elsewhere.
constexpr std::string_view others[] = {"feature", "folder", "folder-of"};

std::string otherKinds() {
  std::string names;
  for (const std::string_view name : others)
    names += " " + std::string(name);
  return names;
}

bool isKind(const std::string& word) {
  return std::ranges::find(others, word) != std::end(others) ||
         std::ranges::find(kinds, word, &Kind::name) != std::end(kinds);
}

ExitCode explain(const Context& context, const Arguments& arguments) {
  const std::string kind = arguments.size() == 2 ? arguments[0] : "app";
  const std::string& item = arguments.back();
  if (arguments.size() == 1 && isKind(item)) throw UsageError("expected explain " + item + " ITEM");
  readSettingsFile(context);
  if (kind == "feature") return explainFeature(item);
  if (kind == "folder") return explainFolder(item);
  if (kind == "folder-of") return explainFolderOf(item);
  return explainItem(named(kinds, kind, "kind of item", otherKinds()), item);
}

constexpr Command commands[] = {
    {"explain", "[KIND] ITEM", "tells step by step why an item is or is not protected now", 1, 2,
     explain},
};

}  // namespace

CommandTable explainCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
