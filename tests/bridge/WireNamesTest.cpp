#include <gtest/gtest.h>

#include "sentrel/bridge/MessageCoding.h"
#include "sentrel/bridge/Notifications.h"

namespace sentrel {
namespace {

/// Other programs know these texts too: none may ever change.
TEST(WireNames, AreTheTextsThatOtherProgramsKnow) {
  const struct {
    std::string_view name;
    std::string_view text;
  } names[] = {
      {messageChannelName, "com.quorvin.sentrel"},
      {messageDataKey, "SentrelServiceMessageData"},
      {messages::AppName::name, "com.quorvin.sentrel.app.name"},
      {messages::IsTouchIDSupported::name, "com.quorvin.sentrel.isTouchIDSupported"},
      {messages::IsPasscodeSet::name, "com.quorvin.sentrel.app.isPassCodeSet"},
      {messages::ParentFolderProtected::name, "com.quorvin.sentrel.app.parent.folder.protected"},
      {messages::HasParentFolder::name, "com.quorvin.sentrel.app.has.parent.folder"},
      {messages::IsSystemApplication::name, "com.quorvin.sentrel.app.systemApplication"},
      {messages::IsApplication::name, "com.quorvin.sentrel.app.application"},
      {messages::IsHiddenApplication::name, "com.quorvin.sentrel.app.hiddenApplication"},
      {messages::IsDeviceLocked::name, "com.quorvin.sentrel.device.locked"},
      {messages::IsDarkModeEnabled::name, "com.quorvin.sentrel.device.darkmode.enabled"},
      {messages::IsFingerOn::name, "com.quorvin.sentrel.isFingerOn"},
      {messages::SuspendFrontMostApp::name, "com.quorvin.sentrel.suspend.front.most.app"},
      {messages::LogMessage::name, "com.quorvin.sentrel.log.message"},
      {messages::KnownNetworks::name, "com.quorvin.sentrel.app.knownNetWorks"},
      {messages::CurrentNetwork::name, "com.quorvin.sentrel.app.lastConnectedNetWork"},
      {messages::HandleAuthentication::name, "com.quorvin.sentrel.app.handle.authentication"},
      {messages::LastUnlocked::name, "com.quorvin.sentrel.app.lastUnlocked"},
      {messages::IsAlertShowing::name, "com.quorvin.sentrel.app.lastUnlocked"},
      {messages::Unlocked::name, "com.quorvin.sentrel.app.unlocked"},
      {notifications::settingsChanged, "com.quorvin.sentrelSettingsChanged"},
      {notifications::forceLockUI, "com.quorvin.sentrelForceLockUINotification"},
      {notifications::lockUI, "com.quorvin.sentrelLockUINotification"},
      {notifications::startBioMetricAssertion,
       "com.quorvin.sentrelStartBioMetricAssertionNotification"},
      {notifications::stopBioMetricAssertion,
       "com.quorvin.sentrelStopBioMetricAssertionNotification"},
      {notifications::resetBioMetricAssertion,
       "com.quorvin.sentrelResetBioMetricAssertionNotification"},
      {notifications::touchIDFingerUp, "com.quorvin.sentrelTouchIDFingerUpNotification"},
      {notifications::authenticationSuccess, "com.quorvin.sentrelAuthenticationSuccess"},
      {notifications::authenticationCancelled, "com.quorvin.sentrelAuthenticationCancelled"},
      {notifications::pearlID, "com.quorvin.sentrelPearlIDNotification"},
      {notifications::pearlIDEventCodeKey, "EC"},
  };
  for (const auto& [name, text] : names)
    EXPECT_EQ(name, text);
}

TEST(WireNames, StandInWhatIsSent) {
  EXPECT_EQ(encodeArgument(std::string("item")),
            UserInfo(PropertyList::Dictionary{{"SentrelServiceMessageData", "item"}}));
  EXPECT_EQ(encodeArgument(messages::AuthenticationPrompt{"T", "M"}),
            UserInfo(PropertyList::Dictionary{{"TITLE_KEY", "T"}, {"MESSAGE_KEY", "M"}}));
}

}  // namespace
}  // namespace sentrel
