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
  const char* what;
  const char* list;
  bool (*isListed)(const SNSettings&, std::string_view item);
  bool (*isProtected)(const SNSettings&, std::string_view item);
};

constexpr Kind kinds[] = {
    {"app", "opening an application", "the protected applications",
     [](const SNSettings& s, std::string_view i) {
       return s.isAppProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isAppProtected(i); }},
    {"notifications", "reading an application's notifications",
     "the applications with protected notifications",
     [](const SNSettings& s, std::string_view i) {
       return s.isNotificationsAppProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isNotificationsAppProtected(i); }},
    {"pane", "a pane of the settings application, by its name", "the protected settings panes",
     [](const SNSettings& s, std::string_view i) {
       return s.isSpecifierProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isSpecifierProtected(i); }},
    {"switch", "a switch of the switches' extension", "the protected switches",
     [](const SNSettings& s, std::string_view i) {
       return s.isFlipSwitchProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isFlipSwitchProtected(i); }},
    {"control", "an item of the control centre", "the protected control-centre items",
     [](const SNSettings& s, std::string_view i) {
       return s.isControlCenterItemProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isControlCenterItemProtected(i); }},
    {"service", "a service of an application",
     "the protected applications, one of which it belongs to",
     [](const SNSettings& s, std::string_view i) {
       return s.isSystemServiceProtected(i, /*ignoreAllOther=*/true);
     },
     [](const SNSettings& s, std::string_view i) { return s.isSystemServiceProtected(i); }},
};

bool explainItem(Explanation& explanation, const Kind& kind, const std::string& item) {
  const SNSettings& settings = SNSettings::sharedSettings();
  if (kind.name == "pane" && item == SNUtils::localizedString("Sentrel"))
    explanation.step("own pane?", "yes: always protected, whatever follows");
  explanation.stepsOfActivity();
  if (kind.name == "switch")
    explanation.step("extension installed?", yesOrNo(SNUtils::isFlipSwitchInstalled()));
  explanation.stepOfSession(item);
  explanation.step("in the set?", yesOrNo(kind.isListed(settings, item)) + ": " + kind.list);
  return kind.isProtected(settings, item);
}

/// The kinds that are explained elsewhere.
struct OtherKind {
  std::string_view name;
  const char* what;
  bool (*explain)(Explanation& explanation, const std::string& item);
};

constexpr OtherKind others[] = {
    {"feature", "one of the phone's own features", explainFeature},
    {"folder", "the folder that holds an application", explainFolder},
    {"folder-of", "an application by the folder that it lies in", explainFolderOf},
};

bool explain(Explanation& explanation, const std::string& kind, const std::string& item) {
  const auto other = std::ranges::find(others, kind, &OtherKind::name);
  if (other != std::end(others)) return other->explain(explanation, item);
  return explainItem(explanation,
                     named(kinds, kind, "kind of item", namesOf(kinds) + namesOf(others)), item);
}

bool isKind(const std::string& word) {
  return std::ranges::find(others, word, &OtherKind::name) != std::end(others) ||
         std::ranges::find(kinds, word, &Kind::name) != std::end(kinds);
}

ExitCode explain(const Context& context, const Arguments& arguments) {
  const std::string kind = arguments.size() == 2 ? arguments[0] : "app";
  const std::string& item = arguments.back();
  if (arguments.size() == 1 && isKind(item)) throw UsageError("expected explain " + item + " ITEM");
  readSettingsFile(context);
  Explanation explanation;
  const bool isProtected = explain(explanation, kind, item);
  return explanation.conclude(context, isProtected);
}

constexpr Command commands[] = {
    {"explain", "[KIND] ITEM", "tells step by step why an item is or is not protected now", 1, 2,
     explain},
};

}  // namespace

std::string kindsHelp() {
  constexpr std::size_t column = 17;
  std::string text;
  for (const Kind& kind : kinds)
    text += programs::helpFor(std::string(kind.name), kind.what, column);
  for (const OtherKind& kind : others)
    text += programs::helpFor(std::string(kind.name), kind.what, column);
  return text;
}

CommandTable explainCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
