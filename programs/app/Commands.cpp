#include "programs/app/Commands.h"

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "device/bus/BusConnection.h"
#include "device/bus/ServiceWatch.h"
#include "programs/common/CommandLine.h"
#include "programs/common/CommandTable.h"
#include "programs/common/HomeScreenProbe.h"
#include "programs/common/OneLine.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SNWiFiManager.h"

namespace sentrel::programs {
namespace {

Answer answerOf(bool yes) {
  return yes ? Answer{"YES"} : Answer{"NO", exitNo};
}

Answer answerOf(const std::optional<std::string>& text) {
  return text ? Answer{oneLine(*text)} : Answer{"NONE", exitNo};
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

using Self = const Application&;
using Item = const std::string&;

/// Replies with what `query` says, about the item where it takes one.
template <auto query>
void tell(Self, Item item, const Reply& reply) {
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

void unlock(Self, Item item, const Reply& reply) {
  SentrelController::sharedInstance().updateLastAuthenticationTime(SessionKey(item));
  reply(outcome(hasSession(item)));
}

void suspend(Self, Item, const Reply& reply) {
  SNUtils::suspendFrontMostApp();
  reply(outcome(isHomeScreenThere()));
}

/// A reply that is given once: by what was asked for, or in its place by the end of the home
/// screen, after which nothing else would come.
class AwaitedOutcome {
 public:
  AwaitedOutcome(const Application& self, Reply reply)
      : reply_(std::move(reply)),
        watch_(std::in_place, self.loop, self.busAddress, bus::springBoardService,
               [this] { end(/*success=*/false); }) {}

  /// A later request takes the place of an earlier one, which nobody answers then.
  ~AwaitedOutcome() { end(/*success=*/false); }
  AwaitedOutcome(const AwaitedOutcome&) = delete;
  AwaitedOutcome& operator=(const AwaitedOutcome&) = delete;

  void end(bool success) {
    watch_.reset();
    if (const Reply reply = std::exchange(reply_, nullptr)) reply(outcome(success));
  }

 private:
  Reply reply_;
  std::optional<bus::ServiceWatch> watch_;
};

void requestPhotos(Self self, Item, const Reply& reply) {
  if (SNUtils::isIOS11())
    throw UsageError(
        "from system 11 on Photos shows its prompt itself; this program has no screen");
  // From before the request on: a home screen that goes meanwhile is not missed.
  const auto awaited = std::make_shared<AwaitedOutcome>(self, reply);
  if (!isHomeScreenThere()) return awaited->end(/*success=*/false);
  SentrelController::sharedInstance().requiresAuthenticationForPhotos(
      {}, [awaited](bool success, bool) { awaited->end(success); });
}

constexpr Command<void(Self, Item, const Reply&)> commands[] = {
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
     "or nobody asks any more",
     0, 0, requestPhotos},
};

constexpr CommandTable table = commands;

}  // namespace

std::string appCommandsHelp() {
  return table.help(/*column=*/22) + "What nobody can tell is answered by NO or NONE.\n";
}

void obey(const Words& words, const Application& self, const Reply& reply) {
  if (words.empty() || words.size() > 2) throw UsageError("expected COMMAND [ITEM]");
  const bool hasItem = words.size() == 2;
  const auto* command = table.find(words[0]);
  if (!command || !command->takes(words.size() - 1))
    throw UsageError("unknown command " + words[0] + (hasItem ? " with an item" : ""));
  command->run(self, hasItem ? words[1] : self.identifier, reply);
}

}  // namespace sentrel::programs
