
#include "sentrel/bridge/Ask.h"

#include <utility>

#include "sentrel/bridge/BridgeState.h"

namespace sentrel {

Bridge::Bridge(Platform& platform, const BridgeSettings& settings,
               std::function<Observer()> defaultObserver)
    : platform_(platform),
      settings_(settings),
      defaultObserver_(std::move(defaultObserver)),
      isSpringBoard_(platform.mainBundle->bundleIdentifier() == springBoardBundleIdentifier) {}

Bridge::~Bridge() = default;

BridgeState& Bridge::state() {
  std::call_once(stateMade_, [this] { state_ = std::make_unique<BridgeState>(platform_); });
  return *state_;
}

std::string_view Bridge::localizedString(std::string_view key) {
  return platform_.mainBundle->localizedString(key);
}

UserInfo Bridge::sendMessageToSpringBoardAndReceiveReplyName(std::string_view name,
                                                             const UserInfo& userInfo) {
  return platform_.messageChannel->sendMessageAndReceiveReply(std::string(messageChannelName),
                                                              std::string(name), userInfo);
}

void Bridge::postDarwinNotification(std::string_view name) {
  platform_.darwinCenter->post({std::string(name), std::nullopt});
}

void Bridge::postCFDistributedNotification(std::string_view name, const UserInfo& params) {
  platform_.distributedCenter->post({std::string(name), params});
}

void Bridge::sendLogLine(const std::string& message) {
  if (isSpringBoard()) return;
  ask<messages::LogMessage>(
      *this, formatText("%@ < - > %@", {platform_.mainBundle->bundleIdentifier(), message}));
}

OperationQueue& Bridge::operationQueue() {
  return *state().operationQueue;
}

void Bridge::setRequestingFromCC(bool value) {
  state().isRequestingFromCC = value;
}

bool Bridge::__isRequestingFromCC() {
  return state().isRequestingFromCC;
}

void Bridge::setLockscreenAsDimmed(bool value) {
  state().isLockscreenAsDimmed = value;
}

bool Bridge::__isLockscreenAsDimmed() {
  return state().isLockscreenAsDimmed;
}

void Bridge::setCurrentAuthenticatedAppBundleId(std::optional<std::string> bundleIdentifier) {
  if (!bundleIdentifier) setRequestingFromCC(/*value=*/false);
  state().currentAuthenticatedAppBundleId = std::move(bundleIdentifier);
}

std::optional<std::string> Bridge::__currentAuthenticatedAppBundleId() {
  return state().currentAuthenticatedAppBundleId;
}

Seconds Bridge::dispatchDelayFromCC() {
  return Seconds(__isRequestingFromCC() ? 0.5 : 0.0);
}

}  // namespace sentrel
