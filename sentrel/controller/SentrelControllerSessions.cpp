#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Ask.h"
#include "sentrel/controller/SentrelController.h"

namespace sentrel {
namespace {

/// How an item travels in a message; none for an object that cannot leave the process.
std::optional<PropertyList> wireForm(const SessionItem& item) {
  if (const auto* text = item.text()) return PropertyList(*text);
  if (const PropertyList* record = item.wireForm()) return *record;
  return std::nullopt;
}

bool isUnlockedAtHome(const SessionItem& item) {
  const auto form = wireForm(item);
  return form && ask<messages::LastUnlocked>(*form);
}

}  // namespace

void SentrelController::updateLastAuthenticationTime(const std::optional<SessionKey>& key) {
  if (!key || !settings_.isRememberUnlockSession()) return;
  const WallTime now = platform_.clock->now();
  lastUnlockedTime_ = now;
  unlockSessionCache_.insert_or_assign(*key, now);
  rememberTillDeviceLockCache_.insert(*key);
  if (SNUtils::isSpringBoard()) return;
  if (const auto item = wireForm(key->item())) ask<messages::Unlocked>(*item);
}

bool SentrelController::shouldIgnoreAuthentication(const SessionItem& item) {
  if (!settings_.isRememberUnlockSession()) return false;
  if (!SNUtils::isSpringBoard()) return isUnlockedAtHome(item);
  // Nothing was ever unlocked, so no cache needs a look.
  if (!lastUnlockedTime_) return false;
  if (!settings_.isRememberUnlockUntilDeviceLocked()) return isInTimedSession(item);
  if (settings_.shouldApplyUnlockSessionToAll()) return !rememberTillDeviceLockCache_.empty();
  return rememberTillDeviceLockCache_.contains(item);
}

bool SentrelController::isInTimedSession(const SessionItem& item) const {
  const auto start = sessionStart(item);
  if (!start) return false;
  const std::chrono::duration<double, std::ratio<60>> length(settings_.rememberUnlockSessionTime());
  return platform_.clock->now() - *start <= length;
}

std::optional<WallTime> SentrelController::sessionStart(const SessionItem& item) const {
  if (settings_.shouldApplyUnlockSessionToAll()) return lastUnlockedTime_;
  const auto entry = unlockSessionCache_.find(item);
  return entry == unlockSessionCache_.end() ? std::nullopt : std::optional(entry->second);
}

void SentrelController::deviceLocked() {
  deviceScreenDimmed();
  rememberTillDeviceLockCache_.clear();
}

void SentrelController::deviceScreenDimmed() {
  passcodeMatched(/*matched=*/false, /*animated=*/false);
  SNTouchIDManager::sharedManager()->stopManager();
}

}  // namespace sentrel
