#include "sentrel/passcode/SNPasscodeViewController.h"

#include "sentrel/bridge/Bridge.h"
#include "sentrel/passcode/PasscodeView.h"
#include "sentrel/platform/SecretText.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIDevice.h"
#include "sentrel/uikit/UIScreen.h"

namespace sentrel {

SNPasscodeViewController::SNPasscodeViewController(Bridge& bridge)
    : PasscodeFlow(bridge.platform()), bridge_(bridge) {}

SNPasscodeViewController::~SNPasscodeViewController() = default;

std::shared_ptr<SNPasscodeViewController> SNPasscodeViewController::makeShared(Bridge& bridge) {
  std::shared_ptr<SNPasscodeViewController> screen(new SNPasscodeViewController(bridge));
  screen->_loadDefaults();
  return screen;
}

std::weak_ptr<SNPasscodeViewController> SNPasscodeViewController::weakSelf() {
  return std::static_pointer_cast<SNPasscodeViewController>(shared_from_this());
}

bool SNPasscodeViewController::isTabletInterface() const {
  return UIDevice::currentDevice().userInterfaceIdiom() == UIUserInterfaceIdiom::pad;
}

void SNPasscodeViewController::_loadDefaults() {
  loadFlowDefaults();
  appearance_ = PasscodeAppearance::defaults(isTabletInterface(),
                                             [this] { return bridge_.isDarkModeEnabled(); });
}

const PasscodeElements& SNPasscodeViewController::elements() const {
  static const PasscodeElements none;
  return passcodeView_ ? passcodeView_->elements() : none;
}

// --- Building ------------------------------------------------------------------------------------

void SNPasscodeViewController::loadView() {
  passcodeView_ = PasscodeView::make(UIScreen::mainScreen().bounds(), appearance_);
  setView(passcodeView_);
}

void SNPasscodeViewController::viewDidLoad() {
  const auto& button = elements().OKButton;
  button->setTitle(localized("OK"), UIControlState::normal);
  button->addTarget(
      [weak = weakSelf()](const auto&) {
        if (const auto self = weak.lock()) self->_validateComplexPasscode();
      },
      UIControlEventTouchUpInside);
  makeCover();
  setUpForView();
  isBuilt_ = true;
  makeDigitBoxes();
  elements().passcodeTextField->setDelegate(weakSelf());
  layOutAgain();
  if (!appNotificationsObserved_) _addObservers();
}

void SNPasscodeViewController::makeDigitBoxes() {
  passcodeView_->makeDigitBoxes(digitsCount(), weakSelf());
  passcodeView_->show(display());
}

void SNPasscodeViewController::show(const PasscodeDisplay& display) {
  if (passcodeView_) passcodeView_->show(display);
}

void SNPasscodeViewController::layOutAgain() {
  if (!isBuilt_) return;
  passcodeView_->setForm(isSimple(), keyboardType());
  passcodeView_->setTopInset(topInset());
}

/// Digits, unless what is asked for is stored and has something else in it: the form may have been
/// reset behind a passcode of free text.
UIKeyboardType SNPasscodeViewController::keyboardType() const {
  if (!isSimple()) return UIKeyboardType::standard;
  if (isUserBeingAskedForNewPasscode() || isUserConfirmingPasscode())
    return UIKeyboardType::numberPad;
  const SecretText stored(_passcode().value_or(""));
  const bool isDigits = stored.text().find_first_not_of("0123456789") == std::string::npos;
  return isDigits ? UIKeyboardType::numberPad : UIKeyboardType::standard;
}

double SNPasscodeViewController::failureCornerRadius() const {
  return isTabletInterface() ? 19 : 14;
}

// --- The entry field -----------------------------------------------------------------------------

bool SNPasscodeViewController::isEntryFieldEditing() const {
  return isBuilt_ && elements().passcodeTextField->isFirstResponder();
}

void SNPasscodeViewController::emptyEntryField() {
  if (passcodeView_) elements().passcodeTextField->setText("");
}

void SNPasscodeViewController::startEditing() {
  if (isBuilt_) elements().passcodeTextField->becomeFirstResponder();
}

void SNPasscodeViewController::endEditing() {
  if (isBuilt_) elements().passcodeTextField->resignFirstResponder();
}

void SNPasscodeViewController::_validateComplexPasscode() {
  if (!isBuilt_) return;
  const SecretText entry(elements().passcodeTextField->text());
  _validatePasscode(entry.text());
}

/// A tap on a box is meant for the field behind them.
bool SNPasscodeViewController::textFieldShouldBeginEditing(UITextField& textField) {
  view()->setNeedsLayout();
  const auto& entry = elements().passcodeTextField;
  if (&textField == entry.get()) return true;
  entry->becomeFirstResponder();
  entry->setSelectedRange({utf16Length(entry->text()), 0});
  return false;
}

bool SNPasscodeViewController::textFieldShouldEndEditing(UITextField& /*textField*/) {
  return mayEndEditing();
}

bool SNPasscodeViewController::textField(UITextField& textField,
                                         NSRange shouldChangeCharactersInRange,
                                         const std::string& replacementString) {
  return edit(textField.text(), shouldChangeCharactersInRange, replacementString);
}

// --- Animations ----------------------------------------------------------------------------------

void SNPasscodeViewController::shakeDigitBoxes(const CAAnimation& shake) {
  for (const auto& box : elements().digitTextFieldsArray)
    box->layer().addAnimation(shake, "shake");
}

void SNPasscodeViewController::slideStep(const CAAnimation& slide) {
  if (passcodeView_) elements().animatingView->layer().addAnimation(slide, "swipe");
}

}  // namespace sentrel
