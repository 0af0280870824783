#include "programs/app/Commands.h"

#include <algorithm>
#include <optional>
#include <type_traits>

#include "programs/common/CommandLine.h"
#include "programs/common/CommandTable.h"
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

using Item = const std::string&;

/// Replies with what `query` says, about the item where it takes one.
template <auto query>
void tell(Item item, const Reply& reply) {
  if constexpr (std::is_invocable_v<decltype(query), Item>)
    reply(answerOf(query(item)));
  else
    reply(answerOf(query()));
}

bool isProtected(Item item) {
  return SNSettings::sharedSettings().isAppProtected(item);
}

bool isListed(Item item) {
  return SNSettings::sharedSettings().isAppProtected(item, /*ignoreAllOther=*/true);
}

bool hasSession(Item item) {
  return SentrelController::sharedInstance().shouldIgnoreAuthentication(item);
}

auto knownNetworks() {
  return SNWiFiManager::sharedManager().knownNetworks();
}

auto currentNetwork() {
  return SNWiFiManager::sharedManager().currentNetWork();
}

void unlock(Item item, const Reply& reply) {
  SentrelController::sharedInstance().updateLastAuthenticationTime(SessionKey(item));
  reply(outcome(hasSession(item)));
}

void suspend(Item, const Reply& reply) {
  SNUtils::suspendFrontMostApp();
  reply(outcome(isHomeScreenThere()));
}

void requestPhotos(Item, const Reply& reply) {
  if (SNUtils::isIOS11())
    throw UsageError(
        "from system 11 on Photos shows its prompt itself; this program has no screen");
  if (!isHomeScreenThere()) return reply(outcome(/*success=*/false));
  SentrelController::sharedInstance().requiresAuthenticationForPhotos(
      {}, [reply](bool success, bool) { reply(outcome(success)); });
}

constexpr Command<void(Item, const Reply&)> commands[] = {
    {"ask", "[ITEM]", "whether it needs authentication now: YES or NO", 0, 1, tell<isProtected>},
    {"listed", "[ITEM]", "whether it is configured as protected, whatever else: YES or NO", 0, 1,
     tell<isListed>},
    {"session", "[ITEM]", "whether an open session covers it: YES or NO", 0, 1, tell<hasSession>},
    {"unlock", "[ITEM]",
     "records that it was authenticated just now: OK, or NO where nobody\nkeeps it", 0, 1, unlock},
    {"name", "[ITEM]", "its name as shown to people", 0, 1, tell<SNUtils::appName>},
    {"application", "[ITEM]", "whether such an application is installed: YES or NO", 0, 1,
     tell<SNUtils::isApplication>},
    {"system", "[ITEM]", "whether it is one of the system's own: YES or NO", 0, 1,
     tell<SNUtils::isSystemApplication>},
    {"hidden", "[ITEM]", "whether the home screen hides it: YES or NO", 0, 1,
     tell<SNUtils::isHiddenApp>},
    {"foldered", "[ITEM]", "whether it lies in a folder: YES or NO", 0, 1,
     tell<SNUtils::hasAnyParentFolder>},
    {"folder", "[ITEM]", "the folder that it lies in", 0, 1, tell<SNUtils::protectedFolderData>},
    {"networks", "", "the Wi-Fi networks that the device has joined before", 0, 0,
     tell<knownNetworks>},
    {"network", "", "the one that it is on", 0, 0, tell<currentNetwork>},
    {"biometrics", "", "whether the device has a biometric sensor: YES or NO", 0, 0,
     tell<SNUtils::isBioMetricsSupported>},
    {"passcode", "", "whether the device has a passcode: YES or NO", 0, 0,
     tell<SNUtils::isDeviceHasPasscode>},
    {"locked", "", "whether it is locked: YES or NO", 0, 0, tell<SNUtils::isDeviceLocked>},
    {"dark", "", "whether it is in dark mode: YES or NO", 0, 0, tell<SNUtils::isDarkModeEnabled>},
    {"finger", "", "whether a finger is on its sensor: YES or NO", 0, 0, tell<SNUtils::isFingerOn>},
    {"suspend", "", "sends the application at the front away: OK, or NO where nobody does", 0, 0,
     suspend},
    {"photos", "",
     "has the home screen ask the owner for authentication, as Photos did\n"
     "before system 11: OK once it succeeded, NO when it was cancelled\n"
     "or nobody asks",
     0, 0, requestPhotos},
};

constexpr CommandTable table = commands;

}  // namespace

std::string appCommandsHelp() {
  return table.help(/*column=*/22) + "What nobody can tell is answered by NO or NONE.\n";
}

void obey(const Words& words, const std::string& ownIdentifier, const Reply& reply) {
  if (words.empty() || words.size() > 2) throw UsageError("expected COMMAND [ITEM]");
  const bool hasItem = words.size() == 2;
  const auto* command = table.find(words[0]);
  if (!command || !command->takes(words.size() - 1))
    throw UsageError("unknown command " + words[0] + (hasItem ? " with an item" : ""));
  command->run(hasItem ? words[1] : ownIdentifier, reply);
}

}  // namespace sentrel::programs
