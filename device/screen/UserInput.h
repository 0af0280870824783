#pragma once

#include <memory>
#include <string>

#include "sentrel/platform/Geometry.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel::screen {

/// The frontmost view at `point` (of the screen, in points) that takes touches, or null. What is
/// hidden, transparent or takes no touches lets them through to what lies behind; nothing is
/// touched outside the view that it is in.
std::shared_ptr<UIView> viewAtPoint(const UIApplication& application, CGPoint point);

/// One finger and one keyboard: turns what they do into what views do.
///
/// A touch belongs to the button or text field that it begins on, or that contains the view that
/// it begins on. A button is pressed while the finger is on it and acts when it is lifted there.
/// Called inside the application's process.
class UserInput {
 public:
  explicit UserInput(UIApplication& application) : application_(application) {}

  void touchBegan(CGPoint point);
  void touchMoved(CGPoint point);
  void touchEnded(CGPoint point);
  void touchCancelled();

  /// UTF-8; goes to the text field that has the typed input, if one has.
  void typeText(const std::string& text);
  void pressBackspace();

 private:
  bool isOnTouched(CGPoint point) const;

  UIApplication& application_;
  /// What the touch under way began on; gone if it went in the meantime.
  std::weak_ptr<UIView> touched_;
};

}  // namespace sentrel::screen
