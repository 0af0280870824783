#pragma once

#include <memory>
#include <string>

#include "programs/gallery/Stage.h"
#include "sentrel/authui/SNAlertController.h"
#include "sentrel/authui/SNAlertView.h"
#include "sentrel/authui/SNAuthenticationView.h"

namespace sentrel::gallery {

/// A prompt on a stage, in the kind of alert that the stage has.
class Prompt {
 public:
  Prompt(Stage& stage, const std::string& title, const std::string& message);
  ~Prompt();
  Prompt(const Prompt&) = delete;
  Prompt& operator=(const Prompt&) = delete;

  /// What the alert shows.
  SNAuthenticationView& content();

  /// The whole alert, which is shaken as one.
  UIView& alertView();

  /// Switches to the passcode row, shows the number pad and types.
  void typePasscode(const std::string& digits);

 private:
  void showAlert();
  void showLegacyAlert();
  void tapSwitchButton();

  Stage& stage_;
  std::shared_ptr<SNAlertController> alert_;
  std::shared_ptr<SNAlertView> legacyAlert_;
};

}  // namespace sentrel::gallery
