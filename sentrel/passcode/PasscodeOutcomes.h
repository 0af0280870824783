#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Seconds.h"
#include "sentrel/uikit/CAAnimation.h"

namespace sentrel {

class UIViewController;

/// What a passcode screen shows, as it stands.
struct PasscodeDisplay {
  enum class FailureLook {
    failure,  ///< on the failure colours
    notice    ///< plain text on nothing
  };

  std::string prompt;
  std::string info;
  bool isInfoHidden = true;
  std::string failure;
  bool isFailureHidden = true;
  FailureLook failureLook = FailureLook::failure;
  /// 0 until the first wrong entry.
  double failureCornerRadius = 0;
  bool isOKButtonHidden = true;
  /// Whether prompt and entry fields make room for the fingerprint.
  bool isContainerHidden = false;
  /// How many digit boxes, from the left, show that they are filled.
  std::size_t maskedBoxes = 0;

  friend bool operator==(const PasscodeDisplay&, const PasscodeDisplay&) = default;
};

enum class PasscodeLeaving {
  removeFromWindow,  ///< and out of its parent controller
  dismiss,           ///< animated
  popAnimated,
  popAtOnce
};

/// The effects of the passcode flow by their names: whoever shows the screen carries them out. None
/// is told before the one before it is done.
class SENTREL_API PasscodeOutcomes {
 public:
  virtual ~PasscodeOutcomes() = default;

  // --- What the flow asks --------------------------------------------------------------------

  /// Whether there are digit boxes to be made anew.
  virtual bool isScreenLoaded() const = 0;
  virtual bool isEntryFieldEditing() const = 0;
  /// The points of a failure pill's corners on this device.
  virtual double failureCornerRadius() const = 0;

  // --- Content -------------------------------------------------------------------------------

  virtual void show(const PasscodeDisplay& display) = 0;
  virtual void showTitle(const std::string& title) = 0;
  /// Form, count of boxes or step changed.
  virtual void layOutAgain() = 0;
  /// As many as digitsCount, in place of those that are there.
  virtual void makeDigitBoxes() = 0;

  // --- The entry field -----------------------------------------------------------------------

  virtual void emptyEntryField() = 0;
  virtual void startEditing() = 0;
  /// Unless the field has to keep its keyboard.
  virtual void endEditing() = 0;

  // --- Animations ----------------------------------------------------------------------------

  /// On every digit box, under the key "shake".
  virtual void shakeDigitBoxes(const CAAnimation& shake) = 0;
  /// On the container of prompt and entry fields, under the key "swipe".
  virtual void slideStep(const CAAnimation& slide) = 0;
  /// The lock screen moves out of its window.
  virtual void slideAway(Seconds duration) = 0;

  // --- Coming and going ----------------------------------------------------------------------

  /// A settings flow comes up, above the host's controller or in its navigation; null shows
  /// nothing.
  virtual void present(const std::shared_ptr<UIViewController>& host) = 0;
  /// The lock screen comes up over the application's first window. Whether there is one.
  virtual bool coverWindow(bool animated) = 0;
  virtual void leave(PasscodeLeaving way) = 0;

  virtual void showNavBar(const std::string& logoutTitle) = 0;
  virtual void removeNavBar() = 0;
  /// The title of the bar's button as it stands.
  virtual std::string navBarButtonTitle() const = 0;

  /// What hides the content while the application is away.
  virtual void showCover() = 0;
  virtual void hideCover() = 0;
};

}  // namespace sentrel
