#pragma once

#include "sentrel/settings/SessionKey.h"

namespace sentrel {

/// What the protection questions ask about unlock sessions. The lock controller implements it.
class UnlockSessions {
 public:
  /// Whether an open session covers the item, so that it needs no authentication now.
  virtual bool shouldIgnoreAuthentication(const SessionItem& item) = 0;

 protected:
  ~UnlockSessions() = default;
};

}  // namespace sentrel
