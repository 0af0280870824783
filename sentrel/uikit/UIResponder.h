#pragma once

#include <memory>

#include "sentrel/platform/Export.h"

namespace sentrel {

/// What can be the one object of an application that receives typed input. Always held by a
/// shared_ptr. Main thread only, as everything in this folder.
class SENTREL_API UIResponder : public std::enable_shared_from_this<UIResponder> {
 public:
  UIResponder() = default;
  virtual ~UIResponder() = default;
  UIResponder(const UIResponder&) = delete;
  UIResponder& operator=(const UIResponder&) = delete;

  virtual bool canBecomeFirstResponder() { return false; }
  virtual bool canResignFirstResponder() { return true; }

  /// Takes the input from whoever has it. False, and nothing changes, when this responder will not
  /// take it or the other will not give it up. It need not be visible.
  bool becomeFirstResponder();

  /// Gives the input up. False when this responder will not; true also when it does not have it.
  /// The application posts that the keyboard will hide.
  bool resignFirstResponder();

  bool isFirstResponder() const;
};

}  // namespace sentrel
