#include "programs/app/Commands.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "programs/common/CommandLine.h"
#include "programs/common/HomeScreenProbe.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel::programs {
namespace {

Answer answerOf(bool yes) {
  return yes ? Answer{"YES"} : Answer{"NO", exitNo};
}

/// A name may hold what would end the line.
Answer answerOf(const std::optional<std::string>& text) {
  if (!text) return {"NONE", exitNo};
  std::string line = *text;
  std::ranges::replace_if(
      line, [](unsigned char c) { return c < ' '; }, ' ');
  return {line};
}

Answer answerOf(const std::optional<PropertyList::Array>& list) {
  return answerOf(list ? std::optional(describe(*list)) : std::nullopt);
}

Answer answerOf(const std::optional<PropertyList::Dictionary>& entries) {
  return answerOf(entries ? std::optional(describe(*entries)) : std::nullopt);
}

Answer outcome(bool success) {
  return success ? Answer{"OK"} : Answer{"NO", exitNo};
}

Answer unlock(const std::string& item) {
  SentrelController& controller = SentrelController::sharedInstance();
  controller.updateLastAuthenticationTime(SessionKey(item));
  return outcome(controller.shouldIgnoreAuthentication(item));
}

Answer suspend(const std::string&) {
  SNUtils::suspendFrontMostApp();
  return outcome(isHomeScreenThere());
}

struct Command {
  std::string_view name;
  bool takesItem;
  Answer (*answer)(const std::string& item);
};

using Item = const std::string&;

constexpr Command commands[] = {
    {"ask", true, [](Item i) { return answerOf(SNSettings::sharedSettings().isAppProtected(i)); }},
    {"listed", true,
     [](Item i) {
       return answerOf(SNSettings::sharedSettings().isAppProtected(i, /*ignoreAllOther=*/true));
     }},
    {"session", true,
     [](Item i) {
       return answerOf(SentrelController::sharedInstance().shouldIgnoreAuthentication(i));
     }},
    {"unlock", true, unlock},
    {"name", true, [](Item i) { return answerOf(SNUtils::appName(i)); }},
    {"application", true, [](Item i) { return answerOf(SNUtils::isApplication(i)); }},
    {"system", true, [](Item i) { return answerOf(SNUtils::isSystemApplication(i)); }},
    {"hidden", true, [](Item i) { return answerOf(SNUtils::isHiddenApp(i)); }},
    {"foldered", true, [](Item i) { return answerOf(SNUtils::hasAnyParentFolder(i)); }},
    {"folder", true, [](Item i) { return answerOf(SNUtils::protectedFolderData(i)); }},
    {"networks", false,
     [](Item) { return answerOf(SNWiFiManager::sharedManager().knownNetworks()); }},
    {"network", false,
     [](Item) { return answerOf(SNWiFiManager::sharedManager().currentNetWork()); }},
    {"biometrics", false, [](Item) { return answerOf(SNUtils::isBioMetricsSupported()); }},
    {"passcode", false, [](Item) { return answerOf(SNUtils::isDeviceHasPasscode()); }},
    {"locked", false, [](Item) { return answerOf(SNUtils::isDeviceLocked()); }},
    {"dark", false, [](Item) { return answerOf(SNUtils::isDarkModeEnabled()); }},
    {"finger", false, [](Item) { return answerOf(SNUtils::isFingerOn()); }},
    {"suspend", false, suspend},
};

void requestPhotos(const Reply& reply) {
  if (SNUtils::isIOS11())
    throw UsageError(
        "from system 11 on Photos shows its prompt itself; this program has no screen");
  if (!isHomeScreenThere()) return reply(outcome(/*success=*/false));
  SentrelController::sharedInstance().requiresAuthenticationForPhotos(
      {}, [reply](bool success, bool) { reply(outcome(success)); });
}

}  // namespace

void obey(const std::vector<std::string>& words, const std::string& ownIdentifier,
          const Reply& reply) {
  if (words.empty() || words.size() > 2) throw UsageError("expected COMMAND [ITEM]");
  const bool hasItem = words.size() == 2;
  if (words[0] == "photos" && !hasItem) return requestPhotos(reply);
  for (const Command& command : commands)
    if (words[0] == command.name && (command.takesItem || !hasItem))
      return reply(command.answer(hasItem ? words[1] : ownIdentifier));
  throw UsageError("unknown command " + words[0] + (hasItem ? " with an item" : ""));
}

}  // namespace sentrel::programs
