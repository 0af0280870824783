#include "sentrel/bridge/SNUtils.h"

#include <utility>

#include "sentrel/bridge/Ask.h"
#include "sentrel/bridge/BridgeSettings.h"
#include "sentrel/bridge/Current.h"

namespace sentrel {

bool SNUtils::isSpringBoard() {
  return Process::current().isSpringBoard();
}

std::string_view SNUtils::localizedString(std::string_view key) {
  return currentPlatform().mainBundle->localizedString(key);
}

UserInfo SNUtils::sendMessageToSpringBoardAndReceiveReplyName(std::string_view name,
                                                              const UserInfo& userInfo) {
  return currentPlatform().messageChannel->sendMessageAndReceiveReply(
      std::string(messageChannelName), std::string(name), userInfo);
}

void SNUtils::postDarwinNotification(std::string_view name) {
  currentPlatform().darwinCenter->post({std::string(name), std::nullopt});
}

void SNUtils::postCFDistributedNotification(std::string_view name, const UserInfo& params) {
  currentPlatform().distributedCenter->post({std::string(name), params});
}

bool SNUtils::isLoggingEnabled() {
  return Process::current().bridgeSettings().isLoggingEnabled();
}

void SNUtils::sendLogLine(const std::string& message) {
  if (isSpringBoard()) return;
  ask<messages::LogMessage>(
      formatText("%@ < - > %@", {currentPlatform().mainBundle->bundleIdentifier(), message}));
}

OperationQueue& SNUtils::operationQueue() {
  return *currentState().operationQueue;
}

void SNUtils::setRequestingFromCC(bool value) {
  currentState().isRequestingFromCC = value;
}

bool SNUtils::__isRequestingFromCC() {
  return currentState().isRequestingFromCC;
}

void SNUtils::setLockscreenAsDimmed(bool value) {
  currentState().isLockscreenAsDimmed = value;
}

bool SNUtils::__isLockscreenAsDimmed() {
  return currentState().isLockscreenAsDimmed;
}

void SNUtils::setCurrentAuthenticatedAppBundleId(std::optional<std::string> bundleIdentifier) {
  if (!bundleIdentifier) setRequestingFromCC(/*value=*/false);
  currentState().currentAuthenticatedAppBundleId = std::move(bundleIdentifier);
}

std::optional<std::string> SNUtils::__currentAuthenticatedAppBundleId() {
  return currentState().currentAuthenticatedAppBundleId;
}

Seconds SNUtils::dispatchDelayFromCC() {
  return Seconds(__isRequestingFromCC() ? 0.5 : 0.0);
}

}  // namespace sentrel
