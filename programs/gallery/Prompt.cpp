#include "programs/gallery/Prompt.h"

#include "programs/common/NumberPad.h"
#include "sentrel/authui/SNAuthenticationViewController.h"
#include "sentrel/authui/SNWindow.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel::gallery {
namespace {

std::string localized(std::string_view key) {
  return std::string(SNUtils::localizedString(key));
}

}  // namespace

Prompt::Prompt(Stage& stage, const std::string& title, const std::string& message) : stage_(stage) {
  stage_.process().run([&] {
    const bool isFace = stage_.options().sensor == screen::GlyphKind::face;
    content().animateFingerPrintActions(isFace ? 2 : 0, /*animated=*/false, {});
    content().setup(title, message);
    stage_.options().legacyAlerts ? showLegacyAlert() : showAlert();
  });
}

Prompt::~Prompt() {
  stage_.process().run([this] {
    if (alert_) alert_->dismissViewControllerAnimated(/*animated=*/false, {});
    if (legacyAlert_) legacyAlert_->dismissAnimated(/*animated=*/false);
    alert_.reset();
    legacyAlert_.reset();
  });
}

SNAuthenticationView& Prompt::content() {
  return stage_.options().legacyAlerts
             ? *SNAuthenticationView::sharedInstance()
             : *SNAuthenticationViewController::sharedInstance()->authenticationView();
}

UIView& Prompt::alertView() {
  if (legacyAlert_) return *legacyAlert_;
  return *alert_->view();
}

void Prompt::showAlert() {
  const auto alert = SNAlertController::alertControllerWithTitle(localized("Sentrel"), std::nullopt,
                                                                 UIAlertControllerStyle::alert);
  alert->setContentViewController(SNAuthenticationViewController::sharedInstance());
  alert->addAction(UIAlertAction::actionWithTitle(
      localized("Enter Passcode"), UIAlertActionStyle::standard,
      [this](const auto&) { content().toggleAuthenticationModes(); }));
  alert->addAction(
      UIAlertAction::actionWithTitle(localized("Cancel"), UIAlertActionStyle::cancel, {}));
  SNWindow::sharedInstance()->presentViewController(alert, /*animated=*/false, {});
  alert_ = alert;
}

void Prompt::showLegacyAlert() {
  const auto alert =
      std::make_shared<SNAlertView>(localized("Sentrel"), std::nullopt,
                                    std::weak_ptr<UIAlertViewDelegate>(), localized("Cancel"));
  alert->setAuthView(SNAuthenticationView::sharedInstance());
  alert->addButtonWithTitle(localized("Enter Passcode"));
  alert->show();
  legacyAlert_ = alert;
}

void Prompt::tapSwitchButton() {
  if (alert_) return alert_->tap(alert_->actions().front());
  legacyAlert_->tap(legacyAlert_->cancelButtonIndex() + 1);
  content().toggleAuthenticationModes();
}

void Prompt::typePasscode(const std::string& digits) {
  stage_.process().run([&] { tapSwitchButton(); });
  stage_.wait(Seconds(0));
  stage_.process().run([&] {
    for (const char digit : digits)
      content().passcodeView()->passcodeTextField()->insertText(std::string(1, digit));
    // The system moves an alert out of the keyboard's way.
    const CGPoint center = alertView().center();
    alertView().setCenter({center.x, center.y - programs::numberPadHeight / 2});
  });
  stage_.showNumberPad();
}

}  // namespace sentrel::gallery
