#pragma once

#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "sentrel/platform/Platform.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/UnlockSessions.h"

namespace sentrel {

/// The lock controller of one process. It keeps the unlock sessions: the home-screen process holds
/// the truth about them, every other process forwards both the recording and the question to it.
///
/// Main thread only, but for sharedInstance.
class SENTREL_API SentrelController final : public UnlockSessions {
 public:
  using SessionTimes = std::unordered_map<SessionKey, WallTime, SessionKeyHash, SessionKeyEqual>;
  using SessionKeys = std::unordered_set<SessionKey, SessionKeyHash, SessionKeyEqual>;

  /// `platform` and `settings` outlive the controller.
  SentrelController(Platform& platform, SNSettings& settings);

  /// The current process's controller.
  static SentrelController& sharedInstance();

  // --- Unlock sessions ---------------------------------------------------------------------

  /// Records that `key` was authenticated just now. None, or sessions switched off, does nothing.
  void updateLastAuthenticationTime(const std::optional<SessionKey>& key);

  /// Whether an open session covers `item`. Outside the home-screen process the caches of this
  /// process are not consulted, and a missing reply means no.
  bool shouldIgnoreAuthentication(const SessionItem& item) override;

  /// Ends the sessions that last until the device locks. Timed sessions outlive a lock.
  void deviceLocked();

  /// The time of the last success of each key, since the process started.
  const SessionTimes& unlockSessionCache() const noexcept { return unlockSessionCache_; }

  /// The keys authenticated since the device was last locked.
  const SessionKeys& rememberTillDeviceLockCache() const noexcept {
    return rememberTillDeviceLockCache_;
  }

  /// The time of the last success of any key.
  const std::optional<WallTime>& lastUnlockedTime() const noexcept { return lastUnlockedTime_; }

 private:
  bool isInTimedSession(const SessionItem& item) const;
  std::optional<WallTime> sessionStart(const SessionItem& item) const;

  Platform& platform_;
  SNSettings& settings_;
  SessionTimes unlockSessionCache_;
  SessionKeys rememberTillDeviceLockCache_;
  std::optional<WallTime> lastUnlockedTime_;
};

}  // namespace sentrel
