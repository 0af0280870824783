#include "sentrel/authui/SNAuthenticationViewController.h"

namespace sentrel {

std::shared_ptr<SNAuthenticationViewController> SNAuthenticationViewController::makeShared() {
  auto controller = std::make_shared<SNAuthenticationViewController>();
  controller->setCurrentAuthenticationMode(SNAuthenticationModeGlyph);
  return controller;
}

void SNAuthenticationViewController::loadView() {
  UIViewController::loadView();
  authenticationView_ = SNAuthenticationView::initWithFrame();
  setView(authenticationView_);
  authenticationView_->setDelegate(
      std::static_pointer_cast<SNAuthenticationViewController>(shared_from_this()));
}

SNAuthenticationView& SNAuthenticationViewController::authenticationView() {
  view();
  return *authenticationView_;
}

CGSize SNAuthenticationViewController::preferredContentSize() {
  return {UIViewController::preferredContentSize().width,
          authenticationView().preferredContentHeight()};
}

SNAuthenticationMode SNAuthenticationViewController::currentAuthenticationMode() {
  return authenticationView().currentAuthenticationMode();
}

void SNAuthenticationViewController::setCurrentAuthenticationMode(SNAuthenticationMode mode) {
  authenticationView().setCurrentAuthenticationMode(mode);
}

void SNAuthenticationViewController::setup(const std::optional<std::string>& title,
                                           const std::optional<std::string>& message) {
  authenticationView().setup(title, message);
}

void SNAuthenticationViewController::animateFingerPrintActions(
    std::int64_t state, bool animated, PKGlyphView::Completion completionHandler) {
  authenticationView().animateFingerPrintActions(state, animated, std::move(completionHandler));
}

void SNAuthenticationViewController::showKeyboard() {
  authenticationView().showKeyboard();
}

void SNAuthenticationViewController::hideKeyboard() {
  authenticationView().hideKeyboard();
}

void SNAuthenticationViewController::switchToPasscodeView() {
  authenticationView().switchToPasscodeView();
}

void SNAuthenticationViewController::switchToGlyphView() {
  authenticationView().switchToGlyphView();
}

void SNAuthenticationViewController::toggleAuthenticationModes() {
  authenticationView().toggleAuthenticationModes();
}

void SNAuthenticationViewController::resetPasscodeState() {
  authenticationView().resetPasscodeState();
}

void SNAuthenticationViewController::passcodeMatchedSuccessfully() {
  if (const auto receiver = delegate()) receiver->passcodeMatchedSuccessfully();
}

void SNAuthenticationViewController::passcodeNotMatched() {
  if (const auto receiver = delegate()) receiver->passcodeNotMatched();
}

}  // namespace sentrel
