#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/SystemVersion.h"
#include "sentrel/platform/SharingDaemon.h"
#include "sentrel/watch/WatchMessages.h"
#include "sentrel/watch/WatchProtocol.h"

namespace sentrel {
namespace {

using Dictionary = PropertyList::Dictionary;
using Known = std::optional<PropertyList>;

/// Where the answers come from. A class that the daemon lacks leaves its answers out: a lock state
/// of 0, say, would speak for the watch.
struct Sources {
  std::shared_ptr<SDStatusMonitor> monitor;
  std::optional<PairedDevice> device;
  std::int64_t firstRSSI;
  std::int64_t secondRSSI;
};

struct Answer {
  watch::Item item;
  std::string_view key;
  Known (*value)(const Sources& sources);
};

template <class Result>
Known ofMonitor(const Sources& sources, Result (SDStatusMonitor::*state)() const) {
  return sources.monitor ? Known(((*sources.monitor).*state)()) : std::nullopt;
}

Known ofDevice(const Sources& sources, bool PairedDevice::*flag) {
  return sources.device ? Known((*sources.device).*flag) : std::nullopt;
}

Known nameOfDevice(const Sources& sources) {
  return sources.device && sources.device->name ? Known(*sources.device->name) : std::nullopt;
}

/// A strength is negative; where the first value is none, the second may be.
Known preferredRSSI(const Sources& sources) {
  return sources.secondRSSI < 0 && sources.firstRSSI >= 1 ? sources.secondRSSI : sources.firstRSSI;
}

constexpr Answer answers[] = {
    {watch::Item::wristState, watch::wristStateKey,
     [](const Sources& from) { return ofMonitor(from, &SDStatusMonitor::pairedWatchWristState); }},
    {watch::Item::lockState, watch::lockStateKey,
     [](const Sources& from) { return ofMonitor(from, &SDStatusMonitor::pairedWatchLockState); }},
    {watch::Item::nearby, watch::nearbyKey,
     [](const Sources& from) { return ofDevice(from, &PairedDevice::isNearby); }},
    {watch::Item::active, watch::activeKey,
     [](const Sources& from) { return ofDevice(from, &PairedDevice::isActive); }},
    {watch::Item::connected, watch::connectedKey,
     [](const Sources& from) { return ofDevice(from, &PairedDevice::isConnected); }},
    {watch::Item::firstRSSI, watch::rssiKey,
     [](const Sources& from) { return Known(from.firstRSSI); }},
    {watch::Item::preferredRSSI, watch::rssiKey, preferredRSSI},
    {watch::Item::name, watch::nameKey, nameOfDevice},
};

/// Null for an element that asks for nothing.
const Answer* answerFor(const PropertyList& element) {
  const auto* number = element.as<std::int64_t>();
  if (!number) return nullptr;
  const auto* found = std::ranges::find(answers, static_cast<watch::Item>(*number), &Answer::item);
  return found == std::end(answers) ? nullptr : found;
}

Dictionary answerTo(const PropertyList::Array& items, const Sources& sources) {
  Dictionary result;
  for (const PropertyList& element : items) {
    const Answer* answer = answerFor(element);
    Known value = answer ? answer->value(sources) : std::nullopt;
    if (value) result.insert_or_assign(std::string(answer->key), std::move(*value));
  }
  return result;
}

void wakeWatch(const Platform& platform, SDPairedDeviceAgent& agent) {
  agent.dispatchSync([&platform, &agent] {
    const Dictionary state{{"met", 1}, {"rin", 1}};
    if (isSystemVersionAtLeast(platform, 14))
      agent._idsSendStateUpdateAsWaking(state, /*waking=*/true);
    else
      agent._idsSendStateUpdate(state);
  });
}

std::optional<PairedDevice> defaultPairedDevice(const SDPairedDeviceAgent& agent) {
  for (PairedDevice& device : agent.devices())
    if (device.isDefaultPairedDevice) return std::move(device);
  return std::nullopt;
}

}  // namespace
}  // namespace sentrel

using namespace sentrel;

void handleSNWatchEvent(const std::shared_ptr<XpcMessage>& message, std::int64_t firstRSSI,
                        std::int64_t secondRSSI) {
  if (!message) return;
  Dictionary result;
  if (const auto* items = find<PropertyList::Array>(message->content(), watch::queryKey)) {
    const Platform& platform = Bridge::sharedBridge().platform();
    const auto agent = platform.pairedDeviceAgent;
    if (agent) wakeWatch(platform, *agent);
    const Sources sources{platform.statusMonitor,
                          agent ? defaultPairedDevice(*agent) : std::nullopt, firstRSSI,
                          secondRSSI};
    result = answerTo(*items, sources);
  }
  message->reply({{std::string(watch::resultKey), std::move(result)}});
}
