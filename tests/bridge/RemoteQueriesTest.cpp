#include <gmock/gmock.h>

#include <functional>

#include "sentrel/bridge/Ask.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNWiFiManager.h"
#include "tests/support/BridgeTest.h"

namespace sentrel {
namespace {

using Dictionary = PropertyList::Dictionary;

/// The answer of a query as text, to compare answers of all types in one table.
std::string shown(bool value) {
  return value ? "YES" : "NO";
}
template <class T>
std::string shown(const std::optional<T>& value) {
  return value ? describe(*value) : "none";
}

struct RemoteCase {
  std::string message;
  /// Empty for a query without argument.
  std::string argument;
  /// What is logged before the reply; none where nothing is.
  std::optional<std::string> label;
  std::function<std::string()> ask;
  PropertyList reply;
  std::string answer;
  std::string answerToNothing;
};

const std::string item = "com.example.item";

const RemoteCase remoteCases[] = {
    {"com.quorvin.sentrel.app.name", item,
     "appName->response: ", [] { return shown(SNUtils::appName(item)); }, "Item", "Item", "none"},
    {"com.quorvin.sentrel.isTouchIDSupported", "", "isBioMetricsSupported->response: ",
     [] { return shown(SNUtils::isBioMetricsSupported()); }, true, "YES", "NO"},
    {"com.quorvin.sentrel.app.isPassCodeSet", "", "isUnlockingDisabled->response: ",
     [] { return shown(SNUtils::isDeviceHasPasscode()); }, 1, "YES", "NO"},
    {"com.quorvin.sentrel.app.parent.folder.protected", item,
     "isFolderProtected for 'com.example.item' -> response: ",
     [] { return shown(SNUtils::protectedFolderData(item)); }, Dictionary{{"a", 1}},
     describe(Dictionary{{"a", 1}}), "none"},
    {"com.quorvin.sentrel.app.has.parent.folder", item, "hasAParentFolder->response: ",
     [] { return shown(SNUtils::hasAnyParentFolder(item)); }, "YES", "YES", "NO"},
    {"com.quorvin.sentrel.app.systemApplication", item, "isSystemApplication->response: ",
     [] { return shown(SNUtils::isSystemApplication(item)); }, true, "YES", "NO"},
    {"com.quorvin.sentrel.app.application", item, "isApplication->response: ",
     [] { return shown(SNUtils::isApplication(item)); }, true, "YES", "NO"},
    {"com.quorvin.sentrel.app.hiddenApplication", item, "isHiddenApp->response: ",
     [] { return shown(SNUtils::isHiddenApp(item)); }, true, "YES", "NO"},
    {"com.quorvin.sentrel.device.locked", "", "isDeviceLocked->response: ",
     [] { return shown(SNUtils::isDeviceLocked()); }, true, "YES", "NO"},
    {"com.quorvin.sentrel.device.darkmode.enabled", "", std::nullopt,
     [] { return shown(SNUtils::isDarkModeEnabled()); }, true, "YES", "NO"},
    {"com.quorvin.sentrel.isFingerOn", "com.example.app", std::nullopt,
     [] { return shown(SNUtils::isFingerOn()); }, true, "YES", "NO"},
};

/// An application's queries, answered by a home screen that says what it is told to.
class RemoteQueries : public BridgeTest {
 protected:
  RemoteQueries() {
    enableLogging();
    // Other programs know this text and those below: none may ever change.
    device.messages().setResponder("com.quorvin.sentrel", springBoard->weakProcess(),
                                   [this](const std::string& message, const UserInfo& userInfo) {
                                     return respond(message, userInfo);
                                   });
  }

  UserInfo respond(const std::string& message, const UserInfo& userInfo) {
    if (message == messages::LogMessage::name) {
      logLines.push_back(decodeText(userInfo).value_or(""));
      return std::nullopt;
    }
    requests.push_back({message, userInfo});
    return reply;
  }

  /// The answer of the query when the home screen replies `value`.
  std::string answerTo(const RemoteCase& query, UserInfo value) {
    reply = std::move(value);
    requests.clear();
    return inApp(query.ask);
  }

  UserInfo reply;
  std::vector<std::pair<std::string, UserInfo>> requests;
};

TEST_F(RemoteQueries, SendTheirNameAndArgumentAndLogTheReplyUnderTheirLabel) {
  for (const RemoteCase& query : remoteCases) {
    SCOPED_TRACE(query.message);
    const UserInfo full = encodeMessageData(query.reply);
    EXPECT_EQ(answerTo(query, full), query.answer);
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].first, query.message);
    EXPECT_EQ(requests[0].second,
              query.argument.empty()
                  ? UserInfo()
                  : UserInfo(Dictionary{{"SentrelServiceMessageData", query.argument}}));
    const Lines expected = query.label ? Lines{*query.label + describe(*full)} : Lines();
    EXPECT_EQ(takeAppLog(), expected);
  }
}

TEST_F(RemoteQueries, ReadAMissingEmptyOrSenselessReplyAsNothing) {
  for (const RemoteCase& query : remoteCases) {
    SCOPED_TRACE(query.message);
    EXPECT_EQ(answerTo(query, std::nullopt), query.answerToNothing);
    EXPECT_EQ(takeAppLog(), query.label ? Lines{*query.label + "(null)"} : Lines());
    EXPECT_EQ(answerTo(query, Dictionary()), query.answerToNothing);
    EXPECT_EQ(answerTo(query, encodeMessageData(PropertyList::Array{1})), query.answerToNothing);
    logLines.clear();
  }
}

/// The home screen's real answers.
class SpringBoardReplies : public BridgeTest {};

TEST_F(SpringBoardReplies, AreNotLoggedWithoutALabel) {
  struct Sender {
    const char* message;
    void (*send)();
  };
  const Sender senders[] = {
      {"com.quorvin.sentrel.suspend.front.most.app", [] { SNUtils::suspendFrontMostApp(); }},
      {"com.quorvin.sentrel.log.message", [] { SNUtils::logMessage("text"); }},
      {"com.quorvin.sentrel.app.knownNetWorks",
       [] { SNWiFiManager::sharedManager().knownNetworks(); }},
      {"com.quorvin.sentrel.app.lastConnectedNetWork",
       [] { SNWiFiManager::sharedManager().currentNetWork(); }},
      {"com.quorvin.sentrel.app.handle.authentication",
       [] { ask<messages::HandleAuthentication>(Bridge::sharedBridge()); }},
      {"com.quorvin.sentrel.app.lastUnlocked",
       [] { SentrelController::sharedInstance().shouldIgnoreAuthentication(item); }},
      {"com.quorvin.sentrel.app.lastUnlocked",
       [] { ask<messages::IsAlertShowing>(Bridge::sharedBridge()); }},
      {"com.quorvin.sentrel.app.unlocked",
       [] { SentrelController::sharedInstance().updateLastAuthenticationTime(SessionKey(item)); }},
  };
  useSettings({{"SentrelEnableLogging", true}, {"SentrelRemember", true}});
  // It logs when it is made.
  inApp([] { SentrelController::sharedInstance(); });
  takeRequests();
  for (const Sender& sender : senders) {
    inApp(sender.send);
    EXPECT_EQ(takeRequests(), Lines{sender.message});
  }
}

TEST_F(SpringBoardReplies, TakeARequestWithoutASensibleArgumentAsOneAboutNothing) {
  const auto reply = [this](std::string_view name, const UserInfo& userInfo) {
    return inApp(
        [&] { return SNUtils::sendMessageToSpringBoardAndReceiveReplyName(name, userInfo); });
  };
  for (const std::string_view name :
       {messages::IsApplication::name, messages::IsSystemApplication::name,
        messages::IsHiddenApplication::name, messages::HasParentFolder::name}) {
    for (const UserInfo& userInfo : {UserInfo(), UserInfo(Dictionary()), encodeMessageData(7)})
      EXPECT_FALSE(decodeReply<bool>(reply(name, userInfo))) << name;
  }
  EXPECT_EQ(messageData(reply(messages::AppName::name, encodeMessageData(7))), nullptr);
  EXPECT_EQ(messageData(reply(messages::ParentFolderProtected::name, std::nullopt)), nullptr);
}

}  // namespace
}  // namespace sentrel
