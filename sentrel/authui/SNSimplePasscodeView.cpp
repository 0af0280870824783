#include "sentrel/authui/SNSimplePasscodeView.h"

#include <utility>

#include "sentrel/authui/PromptColors.h"
#include "sentrel/bridge/Bridge.h"
#include "sentrel/effects/Constraints.h"
#include "sentrel/platform/SecretText.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIDevice.h"

namespace sentrel {
namespace {

constexpr Seconds validationDelay{0.15};
constexpr Seconds refocusDelay{0.1};
constexpr Seconds shakeDuration{0.6};
constexpr double alertWidth = 270;

bool isPad() {
  return UIDevice::currentDevice().userInterfaceIdiom() == UIUserInterfaceIdiom::pad;
}

double boxSpacing() {
  return isPad() ? 60 : 40;
}

CAAnimation shake() {
  return CAAnimation::keyframes("transform.translation.x", {-12, 12, -12, 12, -6, 6, -3, 3, 0},
                                shakeDuration, CATiming{CATiming::Curve::linear});
}

}  // namespace

std::shared_ptr<SNSimplePasscodeView> SNSimplePasscodeView::initWithFrame(const CGRect& frame) {
  std::shared_ptr<SNSimplePasscodeView> view(
      new SNSimplePasscodeView(frame, Bridge::sharedBridge()));
  view->keyboardObservation_ = view->bridge_.platform().localCenter->addObserver(
      std::string(UIKeyboardWillHideNotification),
      [weakView = view->weakSelf()](const Notification& notification) {
        if (const auto self = weakView.lock()) self->keyboardWillHide(notification);
      });
  return view;
}

const UIClass& SNSimplePasscodeView::staticClass() {
  static const UIClass uiClass("SNSimplePasscodeView", &UIView::staticClass());
  return uiClass;
}

std::weak_ptr<SNSimplePasscodeView> SNSimplePasscodeView::weakSelf() {
  return std::static_pointer_cast<SNSimplePasscodeView>(shared_from_this());
}

// --- Boxes -------------------------------------------------------------------------------------

void SNSimplePasscodeView::setupDigitFields() {
  setupDigitFields(PromptColors::of(bridge_.isDarkModeEnabled()).digits);
}

void SNSimplePasscodeView::setupDigitFields(const UIColor& color) {
  removeFields();
  for (std::int64_t made = 0; made < digitsCount_; ++made) {
    digitTextFields_.push_back(makeField(color));
    addSubview(digitTextFields_.back());
  }
  passcodeTextField_ = makeField(color);
  passcodeTextField_->setText("");
  passcodeTextField_->setHidden(/*hidden=*/true);
  addSubview(passcodeTextField_);
  setNeedsUpdateConstraints();
}

void SNSimplePasscodeView::removeFields() {
  for (const auto& box : digitTextFields_)
    box->removeFromSuperview();
  digitTextFields_.clear();
  if (passcodeTextField_) passcodeTextField_->removeFromSuperview();
}

std::shared_ptr<UITextField> SNSimplePasscodeView::makeField(const UIColor& color) {
  auto field = std::make_shared<UITextField>();
  field->setBackgroundColor(UIColor::clearColor());
  field->setTextAlignment(NSTextAlignment::center);
  field->setText("—");
  field->setTextColor(color);
  field->setFont(UIFont::fontWithName("AvenirNext-Regular", isPad() ? 49.5 : 33));
  field->setDelegate(weakSelf());
  field->setSecureTextEntry(/*value=*/false);
  field->setTintColor(UIColor::clearColor());
  field->setKeyboardType(UIKeyboardType::numberPad);
  field->setBorderStyle(UITextBorderStyle::none);
  return field;
}

void SNSimplePasscodeView::updateViewConstraints() {
  constrainBoxes();
  if (passcodeTextField_) constrainHiddenField();
}

/// The legacy alert has a fixed width, in which the row is centred by hand.
double SNSimplePasscodeView::leftInset() const {
  if (!bridge_.canUseAlertView()) return 0;
  const auto halfSteps = static_cast<double>(2 * digitsCount_ - 1);
  return (alertWidth - boxSpacing() * 0.5 * halfSteps) * 0.5;
}

void SNSimplePasscodeView::constrainBoxes() {
  using enum NSLayoutAttribute;
  const auto self = std::static_pointer_cast<UIView>(shared_from_this());
  std::shared_ptr<UIView> leftNeighbour = self;
  double distance = leftInset();
  for (const auto& box : digitTextFields_) {
    constrain(*this, {box, left}, {leftNeighbour, left}, 1, distance);
    constrain(*this, {box, top}, {self, top});
    constrain(*this, {box, bottom}, {self, bottom});
    leftNeighbour = box;
    distance = boxSpacing();
  }
}

void SNSimplePasscodeView::constrainHiddenField() {
  using enum NSLayoutAttribute;
  const auto self = std::static_pointer_cast<UIView>(shared_from_this());
  constrain(*this, {passcodeTextField_, centerX}, {self, centerX});
  constrain(*this, {passcodeTextField_, width}, {self, width}, 0.8);
  constrain(*this, {passcodeTextField_, height}, {nullptr, notAnAttribute}, 0.8, 0);
}

// --- Typing ------------------------------------------------------------------------------------

bool SNSimplePasscodeView::textField(UITextField& textField, NSRange shouldChangeCharactersInRange,
                                     const std::string& replacementString) {
  if (replacementString == "\n") return false;
  const SecretText typed(stringByReplacingCharactersInRange(
      textField.text(), shouldChangeCharactersInRange, replacementString));
  const std::size_t length = utf16Length(typed.text());
  maskBoxes(length);
  if (std::cmp_equal(length, digitsCount_)) scheduleValidation(typed.text());
  return std::cmp_less_equal(length, digitsCount_);
}

void SNSimplePasscodeView::maskBoxes(std::size_t typedLength) {
  for (std::size_t at = 0; at < digitTextFields_.size(); ++at)
    digitTextFields_[at]->setSecureTextEntry(typedLength > at);
}

void SNSimplePasscodeView::scheduleValidation(const std::string& passcode) {
  const auto receiver = delegate();
  if (!receiver) return;
  bridge_.platform().mainQueue->after(
      validationDelay, [receiver, typed = std::make_shared<const SecretText>(passcode)] {
        receiver->_validatePasscode(typed->text());
      });
}

bool SNSimplePasscodeView::textFieldShouldBeginEditing(UITextField& textField) {
  if (!passcodeTextField_ || &textField == passcodeTextField_.get()) return true;
  passcodeTextField_->becomeFirstResponder();
  passcodeTextField_->setSelectedRange({utf16Length(passcodeTextField_->text()), 0});
  return false;
}

bool SNSimplePasscodeView::textFieldShouldEndEditing(UITextField& /*textField*/) {
  return true;
}

// --- Clearing ----------------------------------------------------------------------------------

void SNSimplePasscodeView::clearText() {
  if (passcodeTextField_) passcodeTextField_->setText("");
}

void SNSimplePasscodeView::reset() {
  clearText();
  maskBoxes(0);
}

void SNSimplePasscodeView::_resetTextFields(bool delayed) {
  clearText();
  const bool hasInput = passcodeTextField_ && passcodeTextField_->isFirstResponder();
  if (delayed && !hasInput)
    bridge_.platform().mainQueue->after(refocusDelay, [weakView = weakSelf()] {
      const auto self = weakView.lock();
      // The user may have left the row before the verdict on what he typed came.
      if (self && !self->isHidden()) self->showKeyboard(/*animated=*/false, /*delay=*/false);
    });
  else
    showKeyboard(/*animated=*/false, /*delay=*/false);
  maskBoxes(0);
}

void SNSimplePasscodeView::_denyAccess() {
  _resetTextFields();
  for (const auto& box : digitTextFields_)
    box->layer().addAnimation(shake(), "shake");
}

}  // namespace sentrel
