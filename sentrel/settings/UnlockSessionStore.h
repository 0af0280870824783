#pragma once

#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "sentrel/platform/Clock.h"
#include "sentrel/platform/Export.h"
#include "sentrel/settings/UnlockSessions.h"

namespace sentrel {

class Bridge;
class SNSettings;

/// The unlock sessions of one process and their rules. The home-screen process holds the truth; any
/// other hands what it records on to it and asks it, never its own caches.
///
/// Main thread only.
class SENTREL_API UnlockSessionStore final : public UnlockSessions {
 public:
  using Times = std::unordered_map<SessionKey, WallTime, SessionKeyHash, SessionKeyEqual>;
  using Keys = std::unordered_set<SessionKey, SessionKeyHash, SessionKeyEqual>;

  /// What is handed in outlives the store.
  UnlockSessionStore(Bridge& bridge, const SNSettings& settings)
      : bridge_(bridge), settings_(settings) {}

  /// Records that `key` was authenticated just now. None, or sessions switched off, does nothing.
  void record(const std::optional<SessionKey>& key);

  /// Outside the home-screen process a missing reply means no.
  bool shouldIgnoreAuthentication(const SessionItem& item) override;

  /// Ends the sessions that last until the device locks. Timed ones outlive a lock.
  void endWithLock() { untilLock_.clear(); }

  /// The time of the last success of each key, since the process started.
  const Times& times() const noexcept { return times_; }

  /// What was authenticated behind the last lock of the device.
  const Keys& untilLock() const noexcept { return untilLock_; }

  /// The time of the last success of any key.
  const std::optional<WallTime>& lastTime() const noexcept { return lastTime_; }

 private:
  bool isInTimedSession(const SessionItem& item) const;
  std::optional<WallTime> startOf(const SessionItem& item) const;

  Bridge& bridge_;
  const SNSettings& settings_;
  Times times_;
  Keys untilLock_;
  std::optional<WallTime> lastTime_;
};

}  // namespace sentrel
