#pragma once

#include <cstdint>

#include "host/PasscodeRecord.h"
#include "sentrel/platform/Seconds.h"

namespace sentrel::host {

/// After so many wrong entries, so long a wait before each further one.
struct LockoutRule {
  /// 0 or less for no lockout.
  std::int64_t attempts = 0;
  Seconds wait{60};
};

/// Counts attempts in a file, so that neither ending the process nor pulling the battery brings
/// them back: each is written before it is checked, and only a match takes them away. A clock that
/// was set back has the wait begin anew; one that was set forward shortens it, for nothing else
/// tells the time.
class PasscodeLockout {
 public:
  /// Both outlive the lockout.
  PasscodeLockout(PasscodeRecord& record, Clock& clock) : record_(record), clock_(clock) {}

  const LockoutRule& rule() const noexcept { return rule_; }
  void setRule(const LockoutRule& rule) noexcept { rule_ = rule; }

  /// What is left of the wait; 0 where there is none.
  Seconds remaining();

  /// Takes an attempt down. NO, and nothing is counted, during a wait.
  bool beginAttempt();

  void forgetAttempts();

 private:
  std::int64_t attempts() const;
  double now() const { return clock_.now().time_since_epoch().count(); }

  PasscodeRecord& record_;
  Clock& clock_;
  LockoutRule rule_;
};

}  // namespace sentrel::host
