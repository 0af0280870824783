#pragma once

#include "sentrel/platform/Export.h"

namespace sentrel {

/// Hears what becomes of a passcode typed into an authentication view.
class SENTREL_API SNAuthenticationViewDelegate {
 public:
  virtual ~SNAuthenticationViewDelegate() = default;
  virtual void passcodeMatchedSuccessfully() {}
  virtual void passcodeNotMatched() {}
};

/// Hears the same from the controller of an authentication view.
class SENTREL_API SNAuthenticationDelegate {
 public:
  virtual ~SNAuthenticationDelegate() = default;
  virtual void passcodeMatchedSuccessfully() {}
  virtual void passcodeNotMatched() {}
};

}  // namespace sentrel
