#include "sentrel/authui/SNAuthenticationViewController.h"

namespace sentrel {

std::shared_ptr<SNAuthenticationViewController> SNAuthenticationViewController::makeShared() {
  auto controller = std::make_shared<SNAuthenticationViewController>();
  controller->setCurrentAuthenticationMode(SNAuthenticationModeGlyph);
  return controller;
}

void SNAuthenticationViewController::loadView() {
  UIViewController::loadView();
  const auto view = SNAuthenticationView::initWithFrame();
  setView(view);
  view->setDelegate(std::static_pointer_cast<SNAuthenticationViewController>(shared_from_this()));
}

std::shared_ptr<SNAuthenticationView> SNAuthenticationViewController::authenticationView() {
  return std::dynamic_pointer_cast<SNAuthenticationView>(view());
}

CGSize SNAuthenticationViewController::preferredContentSize() {
  const auto view = authenticationView();
  return {UIViewController::preferredContentSize().width,
          view ? view->preferredContentHeight() : 0};
}

SNAuthenticationMode SNAuthenticationViewController::currentAuthenticationMode() {
  const auto view = authenticationView();
  return view ? view->currentAuthenticationMode() : 0;
}

void SNAuthenticationViewController::setCurrentAuthenticationMode(SNAuthenticationMode mode) {
  if (const auto view = authenticationView()) view->setCurrentAuthenticationMode(mode);
}

void SNAuthenticationViewController::setup(const std::optional<std::string>& title,
                                           const std::optional<std::string>& message) {
  if (const auto view = authenticationView()) view->setup(title, message);
}

void SNAuthenticationViewController::animateFingerPrintActions(
    std::int64_t state, bool animated, PKGlyphView::Completion completionHandler) {
  if (const auto view = authenticationView())
    view->animateFingerPrintActions(state, animated, std::move(completionHandler));
}

void SNAuthenticationViewController::showKeyboard() {
  if (const auto view = authenticationView()) view->showKeyboard();
}

void SNAuthenticationViewController::hideKeyboard() {
  if (const auto view = authenticationView()) view->hideKeyboard();
}

void SNAuthenticationViewController::switchToPasscodeView() {
  if (const auto view = authenticationView()) view->switchToPasscodeView();
}

void SNAuthenticationViewController::switchToGlyphView() {
  if (const auto view = authenticationView()) view->switchToGlyphView();
}

void SNAuthenticationViewController::toggleAuthenticationModes() {
  if (const auto view = authenticationView()) view->toggleAuthenticationModes();
}

void SNAuthenticationViewController::resetPasscodeState() {
  if (const auto view = authenticationView()) view->resetPasscodeState();
}

void SNAuthenticationViewController::passcodeMatchedSuccessfully() {
  if (const auto receiver = delegate()) receiver->passcodeMatchedSuccessfully();
}

void SNAuthenticationViewController::passcodeNotMatched() {
  if (const auto receiver = delegate()) receiver->passcodeNotMatched();
}

}  // namespace sentrel
