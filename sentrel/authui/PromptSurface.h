#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "sentrel/authui/GlyphState.h"
#include "sentrel/authui/SNAuthenticationDelegates.h"
#include "sentrel/authui/SNAuthenticationView.h"
#include "sentrel/uikit/UIAlertView.h"
#include "sentrel/uikit/UIViewController.h"

namespace sentrel {

/// Hears what the owner does with a prompt, on whichever surface it is.
class SENTREL_API PromptOwner : public SNAuthenticationDelegate,
                                public SNAuthenticationViewDelegate,
                                public UIAlertViewDelegate {};

/// One way to put a prompt on screen, and what is on screen that way. Which of the two a running
/// system takes may change from one moment to the next. Main thread only.
class SENTREL_API PromptSurface {
 public:
  using Completion = std::function<void()>;

  /// What a prompt needs to know.
  struct Prompt {
    /// None shows nothing.
    std::optional<std::string> title;
    std::optional<std::string> message;
    bool isPasscodeForced = false;
    /// Whether it has a button that switches between glyph and passcode.
    bool canSwitch = false;
    /// What the glyph shows at first.
    GlyphState glyph = GlyphState::idle;
    std::weak_ptr<PromptOwner> owner;
    /// Null shows nothing where a presenter is needed.
    std::shared_ptr<UIViewController> presenter;
    Completion onSwitch;
    Completion onCancel;
    /// Called whenever the prompt's place on screen has settled: now the keyboard may be looked at.
    Completion onSettled;
  };

  virtual ~PromptSurface() = default;

  /// Before a prompt's turn: what an earlier one left behind goes back to the glyph.
  virtual void prepare(bool isPasscodeForced) = 0;

  /// How long a prompt waits when no other has to go first; none: it is shown in the same turn.
  virtual std::optional<Seconds> waitBeforeShowing() const = 0;

  virtual void show(const Prompt& prompt) = 0;

  /// Takes what is on screen for no longer there, and leaves it alone.
  virtual void forget() = 0;

  /// Closes what is on screen; there is something. The completion may be empty.
  virtual void dismiss(bool animated, Completion completion) = 0;

  /// Whether the completion of a dismissal comes only once the prompt is gone.
  virtual bool tellsWhenDismissed() const = 0;

  /// What was shown last and not dismissed, or null.
  virtual std::shared_ptr<UIResponder> alert() const = 0;

  virtual bool isShowing() const = 0;

  /// What shakes when the owner was not recognised, or null.
  virtual std::shared_ptr<UIView> shakenView() const = 0;

  /// The view that a prompt on this surface shows, or null while it has none.
  virtual std::shared_ptr<SNAuthenticationView> viewInUse() const = 0;

  /// Brings the glyph to `state`. The completion may be empty.
  virtual void animateGlyph(GlyphState state, bool animated, Completion completion) = 0;

  /// Undoes what a stop of the sensor does to the window that the prompt may be in.
  virtual void keepVisible() const = 0;
};

}  // namespace sentrel
