#include <optional>
#include <string>
#include <utility>

#include "sentrel/bridge/Bridge.h"
#include "sentrel/platform/SharingDaemon.h"
#include "sentrel/watch/WatchMessages.h"
#include "sentrel/watch/WatchProtocol.h"
#include "sentrel/watch/WatchQueries.h"

namespace sentrel {
namespace {

using Dictionary = PropertyList::Dictionary;
using Array = PropertyList::Array;

constexpr double fullIntensity = 1.0;
constexpr Seconds thirdTapDelay{0.5};

Dictionary queryFor(Array items) {
  return {{std::string(watch::eventKey), true}, {std::string(watch::queryKey), std::move(items)}};
}

PropertyList numberOf(watch::Item item) {
  return static_cast<std::int64_t>(item);
}

/// What stands for the daemon's answer in `reply`.
PropertyList resultOf(const std::optional<PropertyList>& reply) {
  const auto* entries = reply ? reply->as<Dictionary>() : nullptr;
  const PropertyList* result = entries ? find(*entries, watch::resultKey) : nullptr;
  return result ? *result : Dictionary();
}

void send(const Platform& platform, const Dictionary& query, WatchReply reply) {
  const auto connection =
      platform.xpc->createMachServiceConnection(std::string(sharingDaemonServiceName));
  if (!connection) return;
  connection->resume();
  connection->sendMessageWithReply(
      query, [reply = std::move(reply)](const std::optional<PropertyList>& answered) {
        if (reply) reply(resultOf(answered));
      });
}

}  // namespace

void watch::askForUnlock(const Platform& platform, bool preferSecondRSSI, WatchReply reply) {
  const Item rssi = preferSecondRSSI ? Item::preferredRSSI : Item::firstRSSI;
  Array items;
  for (const Item item : {Item::wristState, Item::lockState, Item::nearby, Item::active,
                          Item::connected, rssi, Item::name})
    items.push_back(numberOf(item));
  send(platform, queryFor(std::move(items)), std::move(reply));
}

void watch::vibrate(const Platform& platform, std::int64_t mode) {
  const auto connection = platform.xpc->connectToAudioControl(
      std::string(nanoAudioControlServiceName), privilegedConnection);
  if (!connection) return;
  connection->resume();
  connection->setHapticIntensity(fullIntensity);
  if (mode == 1 || mode == 2) connection->setHapticIntensity(fullIntensity);
  if (mode != 2) return connection->invalidate();
  // Nobody but this block keeps the connection for the last tap.
  platform.mainQueue->after(thirdTapDelay, [connection] {
    connection->setHapticIntensity(fullIntensity);
    connection->invalidate();
  });
}

}  // namespace sentrel

using namespace sentrel;

void sendSNWatchQueryWithReply(const PropertyList::Dictionary& query, WatchReply reply) {
  send(Bridge::sharedBridge().platform(), query, std::move(reply));
}

void sendGeneralSNWatchQueryWithReply(bool preferSecondRSSI, WatchReply reply) {
  watch::askForUnlock(Bridge::sharedBridge().platform(), preferSecondRSSI, std::move(reply));
}

void sendInvalidateRSSISNWatchQueryWithReply(WatchReply reply) {
  sendSNWatchQueryWithReply(queryFor(Array{true}), std::move(reply));
}

void vibrateAppleWatch(std::int64_t mode) {
  watch::vibrate(Bridge::sharedBridge().platform(), mode);
}
