#include "sentrel/bridge/SNUtils.h"

#include "sentrel/Process.h"
#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/BridgeSettings.h"

namespace sentrel {
namespace {

Platform& platform() {
  return Process::current().platform();
}

}  // namespace

bool SNUtils::isSpringBoard() {
  return platform().mainBundle->bundleIdentifier() == springBoardBundleIdentifier;
}

std::string_view SNUtils::localizedString(std::string_view key) {
  return platform().mainBundle->localizedString(key);
}

UserInfo SNUtils::sendMessageToSpringBoardAndReceiveReplyName(std::string_view name,
                                                              const UserInfo& userInfo) {
  return platform().messageChannel->sendMessageAndReceiveReply(std::string(messageChannelName),
                                                               std::string(name), userInfo);
}

void SNUtils::postDarwinNotification(std::string_view name) {
  platform().darwinCenter->post({std::string(name), std::nullopt});
}

void SNUtils::postCFDistributedNotification(std::string_view name, const UserInfo& params) {
  platform().distributedCenter->post({std::string(name), params});
}

bool SNUtils::isLoggingEnabled() {
  return Process::current().bridgeSettings().isLoggingEnabled();
}

void SNUtils::sendLogLine(const std::string& message) {
  if (isSpringBoard()) return;
  ask<messages::LogMessage>(
      formatText("%@ < - > %@", {platform().mainBundle->bundleIdentifier(), message}));
}

}  // namespace sentrel
