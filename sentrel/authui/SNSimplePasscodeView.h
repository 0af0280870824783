#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/NotificationCenter.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

class Bridge;

class SENTREL_API SNSimplePasscodeViewDelegate {
 public:
  virtual ~SNSimplePasscodeViewDelegate() = default;
  /// A passcode of full length was typed. Whether it is the right one.
  virtual bool _validatePasscode(const std::string& /*passcode*/) { return false; }
};

/// A row of boxes that shows how many digits of a passcode have been typed. One hidden field takes
/// and holds what is typed; a box is masked when its digit is there.
///
/// Where the notification centre would cover the system's keyboard, the row borrows the keyboard's
/// view and shows it in the notification centre's own window.
///
/// A passcode of full length goes to the delegate 0.15 s after its last digit; the delegate is kept
/// alive until then. Typed text is overwritten when it is done with, and never logged.
class SENTREL_API SNSimplePasscodeView : public UIView, public UITextFieldDelegate {
 public:
  /// The current process's own row.
  static std::shared_ptr<SNSimplePasscodeView> sharedInstance();

  /// A row without boxes, which listens for the keyboard going away.
  static std::shared_ptr<SNSimplePasscodeView> initWithFrame(const CGRect& frame);

  static const UIClass& staticClass();

  std::shared_ptr<SNSimplePasscodeViewDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(std::weak_ptr<SNSimplePasscodeViewDelegate> delegate) {
    delegate_ = std::move(delegate);
  }

  /// How many boxes the next setupDigitFields makes, and how long a full passcode is, in UTF-16
  /// code units.
  std::int64_t digitsCount() const noexcept { return digitsCount_; }
  void setDigitsCount(std::int64_t count) noexcept { digitsCount_ = count; }

  /// Left to right.
  const std::vector<std::shared_ptr<UITextField>>& digitTextFieldsArray() const noexcept {
    return digitTextFields_;
  }

  /// The hidden field; null before setupDigitFields.
  const std::shared_ptr<UITextField>& passcodeTextField() const noexcept {
    return passcodeTextField_;
  }

  /// The system's keyboard view while it is borrowed, else null.
  const std::shared_ptr<UIView>& hackyKB() const noexcept { return hackyKB_; }

  /// Makes the boxes and the hidden field, in place of those that are there, in the colour of the
  /// present appearance or in `color`.
  void setupDigitFields();
  void setupDigitFields(const UIColor& color);

  /// Adds the constraints that lay the boxes out.
  void updateViewConstraints();
  void updateConstraints() override { updateViewConstraints(); }

  /// Forgets what was typed and unmasks every box. Input stays where it is.
  void reset();

  /// Forgets what was typed and takes the input back: at once, or with `delayed` after 0.1 s where
  /// the hidden field has lost it, unless the row is hidden by then.
  void _resetTextFields(bool delayed = true);

  /// Forgets what was typed and shakes every box.
  void _denyAccess();

  /// Takes the input, and brings the borrowed keyboard into view where one is needed.
  void showKeyboard(bool animated = true, bool delay = true);

  /// Lets go of the borrowed keyboard.
  void hideHackyKeyboard();
  /// The same, and gives the input up.
  void hideKeyboard();
  void keyboardWillHide(const Notification& notification);

  bool textFieldShouldBeginEditing(UITextField& textField) override;
  bool textFieldShouldEndEditing(UITextField& textField) override;
  bool textField(UITextField& textField, NSRange shouldChangeCharactersInRange,
                 const std::string& replacementString) override;

 private:
  SNSimplePasscodeView(const CGRect& frame, Bridge& bridge)
      : UIView(frame, staticClass()), bridge_(bridge) {}

  std::weak_ptr<SNSimplePasscodeView> weakSelf();
  double leftInset() const;
  bool isKeyboardCovered() const;
  std::shared_ptr<UITextField> makeField(const UIColor& color);
  void removeFields();
  void constrainBoxes();
  void constrainHiddenField();
  void clearText();
  void maskBoxes(std::size_t typedLength);
  void scheduleValidation(const std::string& passcode);
  void borrowKeyboard();
  void placeKeyboard(bool animated);

  Bridge& bridge_;
  std::weak_ptr<SNSimplePasscodeViewDelegate> delegate_;
  std::int64_t digitsCount_ = 0;
  std::vector<std::shared_ptr<UITextField>> digitTextFields_;
  std::shared_ptr<UITextField> passcodeTextField_;
  std::shared_ptr<UIView> hackyKB_;
  Observation keyboardObservation_;
};

}  // namespace sentrel
