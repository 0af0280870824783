#include "sentrel/settings/UnlockSessionStore.h"

#include <chrono>

#include "sentrel/bridge/Ask.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel {
namespace {

/// How an item travels in a message; none for an object that cannot leave the process.
std::optional<PropertyList> wireForm(const SessionItem& item) {
  if (const auto* text = item.text()) return PropertyList(*text);
  if (const PropertyList* record = item.wireForm()) return *record;
  return std::nullopt;
}

}  // namespace

void UnlockSessionStore::record(const std::optional<SessionKey>& key) {
  if (!key || !settings_.isRememberUnlockSession()) return;
  const WallTime now = bridge_.platform().clock->now();
  lastTime_ = now;
  times_.insert_or_assign(*key, now);
  untilLock_.insert(*key);
  if (bridge_.isSpringBoard()) return;
  if (const auto item = wireForm(key->item())) ask<messages::Unlocked>(bridge_, *item);
}

bool UnlockSessionStore::shouldIgnoreAuthentication(const SessionItem& item) {
  if (!settings_.isRememberUnlockSession()) return false;
  if (!bridge_.isSpringBoard()) {
    const auto form = wireForm(item);
    return form && ask<messages::LastUnlocked>(bridge_, *form);
  }
  // Nothing was ever unlocked, so no cache needs a look.
  if (!lastTime_) return false;
  if (!settings_.isRememberUnlockUntilDeviceLocked()) return isInTimedSession(item);
  if (settings_.shouldApplyUnlockSessionToAll()) return !untilLock_.empty();
  return untilLock_.contains(item);
}

bool UnlockSessionStore::isInTimedSession(const SessionItem& item) const {
  const auto start = startOf(item);
  if (!start) return false;
  const std::chrono::duration<double, std::ratio<60>> length(settings_.rememberUnlockSessionTime());
  return bridge_.platform().clock->now() - *start <= length;
}

std::optional<WallTime> UnlockSessionStore::startOf(const SessionItem& item) const {
  if (settings_.shouldApplyUnlockSessionToAll()) return lastTime_;
  const auto entry = times_.find(item);
  return entry == times_.end() ? std::nullopt : std::optional(entry->second);
}

}  // namespace sentrel
