#pragma once

#include <memory>
#include <vector>

#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UINavigationBar.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// What a passcode screen is made of, by the names of its properties. Null until they are built.
struct PasscodeElements {
  std::shared_ptr<UIImageView> backgroundImageView;
  /// Holds prompt and entry fields: what slides from step to step.
  std::shared_ptr<UIView> animatingView;
  std::shared_ptr<UILabel> enterPasscodeLabel;
  std::shared_ptr<UILabel> enterPasscodeInfoLabel;
  std::shared_ptr<UILabel> failedAttemptLabel;
  /// Left to right.
  std::vector<std::shared_ptr<UITextField>> digitTextFieldsArray;
  /// Holds the entry field and the button; hidden in the simple form.
  std::shared_ptr<UIView> complexPasscodeOverlayView;
  std::shared_ptr<UITextField> passcodeTextField;
  std::shared_ptr<UIButton> OKButton;
  /// Null but on a lock screen with a logout button.
  std::shared_ptr<UINavigationBar> navBar;
};

}  // namespace sentrel
