#include "sentrel/authui/SNAuthenticationView.h"

#include <algorithm>
#include <utility>

#include "sentrel/authui/PromptColors.h"
#include "sentrel/bridge/Bridge.h"
#include "sentrel/effects/Constraints.h"
#include "sentrel/settings/PasscodeCipher.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/uikit/TextSize.h"
#include "sentrel/uikit/UIScreen.h"

namespace sentrel {
namespace {

constexpr double glyphSize = 63;
constexpr double passcodeHeight = 46;
constexpr double gap = 10;
constexpr double bottomGap = 5;
constexpr std::int64_t glyphStyle = 2;
constexpr double alertViewWidth = 270;

}  // namespace

std::shared_ptr<SNAuthenticationView> SNAuthenticationView::initWithFrame(const CGRect& frame) {
  std::shared_ptr<SNAuthenticationView> view(
      new SNAuthenticationView(frame, Bridge::sharedBridge(), SNSettings::sharedSettings()));
  view->setupUI();
  return view;
}

const UIClass& SNAuthenticationView::staticClass() {
  static const UIClass uiClass("SNAuthenticationView", &UIView::staticClass());
  return uiClass;
}

std::shared_ptr<UIView> SNAuthenticationView::self() {
  return std::static_pointer_cast<UIView>(shared_from_this());
}

PromptColors SNAuthenticationView::presentColors() const {
  return PromptColors::of(bridge_.isDarkModeEnabled());
}

/// Brings in the framework that has the glyph's class; it moved from one system to the next.
void SNAuthenticationView::loadGlyphClass() {
  const Platform& platform = bridge_.platform();
  if (platform.glyphViewClass || !platform.libraries) return;
  std::string path = "/System/Library/PrivateFrameworks/PassKitUIFoundation.framework";
  if (!platform.libraries->canOpenBundle(path))
    path = "/System/Library/Frameworks/PassKit.framework";
  if (platform.libraries->loadBundle(path))
    bridge_.logMessage("PassKitUIFoundation.framework loaded successfully");
}

// --- Building ----------------------------------------------------------------------------------

void SNAuthenticationView::setupUI() {
  const PromptColors colors = presentColors();
  addGlyphView(colors.glyph);
  addPasscodeView(colors.digits);
  addTitleLabel(colors.title);
  addMessageLabel(colors.message);
}

void SNAuthenticationView::addGlyphView(const UIColor& color) {
  using enum NSLayoutAttribute;
  loadGlyphClass();
  glyphView_ = PKGlyphView::initWithStyle(glyphStyle);
  glyphViewWidthConstraint_ = constantConstraint({glyphView_, width}, glyphSize);
  glyphViewHeightConstraint_ = constantConstraint({glyphView_, height}, glyphSize);
  if (!glyphView_) return;
  glyphView_->setFrame(CGRectMake(0, 0, glyphSize, glyphSize));
  colorGlyph(color);
  addSubview(glyphView_);
  constrain(*this, {glyphView_, centerX}, {self(), centerX});
  constrain(*this, {glyphView_, top}, {self(), top});
  addConstraint(glyphViewWidthConstraint_);
  addConstraint(glyphViewHeightConstraint_);
}

void SNAuthenticationView::setupGlyphViewTheme() {
  if (glyphView_) colorGlyph(presentColors().glyph);
}

void SNAuthenticationView::colorGlyph(const UIColor& color) {
  if (!glyphView_) return;
  if (glyphView_->setColorMode) glyphView_->setColorMode(0, /*animated=*/false);
  if (glyphView_->setPrimaryColor)
    glyphView_->setPrimaryColor(color);
  else if (glyphView_->_setPrimaryColor)
    glyphView_->_setPrimaryColor(color, /*animated=*/false);
}

void SNAuthenticationView::addPasscodeView(const UIColor& color) {
  using enum NSLayoutAttribute;
  passcodeView_ = SNSimplePasscodeView::initWithFrame({});
  passcodeView_->setDigitsCount(passcodeLength);
  passcodeView_->setDelegate(std::static_pointer_cast<SNAuthenticationView>(shared_from_this()));
  passcodeView_->setupDigitFields(color);
  addSubview(passcodeView_);
  constrain(*this, {passcodeView_, centerX}, {self(), centerX});
  constrain(*this, {passcodeView_, top}, {self(), top});
  passcodeViewWidthConstraint_ = constrain(*this, {passcodeView_, width}, {self(), width});
  passcodeViewHeightConstraint_ =
      constrainToConstant(*this, {passcodeView_, height}, passcodeHeight);
  passcodeView_->updateConstraintsIfNeeded();
  passcodeView_->setHidden(/*hidden=*/true);
}

std::shared_ptr<UILabel> SNAuthenticationView::addLabel(const UIFont& font, const std::string& text,
                                                        const UIColor& color) {
  using enum NSLayoutAttribute;
  auto label = std::make_shared<UILabel>();
  label->setNumberOfLines(0);
  label->setFont(font);
  label->setText(text);
  label->setBackgroundColor(UIColor::clearColor());
  label->setTextColor(color);
  label->setTextAlignment(NSTextAlignment::center);
  addSubview(label);
  constrain(*this, {label, centerX}, {self(), centerX});
  constrain(*this, {label, width}, {self(), width}, 0.8);
  return label;
}

void SNAuthenticationView::addTitleLabel(const UIColor& color) {
  using enum NSLayoutAttribute;
  titleLabel_ = addLabel(UIFont::boldSystemFontOfSize(17), "My Title", color);
  if (glyphView_)
    constrain(*this, {titleLabel_, top}, {glyphView_, bottom}, 1, gap);
  else
    constrain(*this, {titleLabel_, top}, {self(), top}, 1, glyphSize + gap);
  titleLabelHeightConstraint_ = constantConstraint({titleLabel_, height}, 25);
}

void SNAuthenticationView::addMessageLabel(const UIColor& color) {
  using enum NSLayoutAttribute;
  messageLabel_ =
      addLabel(UIFont::systemFontOfSize(14), bridge_.authenticationMessage().value_or(""), color);
  constrain(*this, {messageLabel_, top}, {titleLabel_, bottom}, 1, gap);
  messageLabelHeightConstraint_ = constantConstraint({messageLabel_, height}, 25);
}

// --- Filling -----------------------------------------------------------------------------------

void SNAuthenticationView::setup(const std::optional<std::string>& title,
                                 const std::optional<std::string>& message) {
  const PromptColors colors = presentColors();
  passcodeView_->reset();
  titleLabel_->setTextColor(colors.title);
  fill(*titleLabel_, *titleLabelHeightConstraint_, title);
  messageLabel_->setTextColor(colors.message);
  fill(*messageLabel_, *messageLabelHeightConstraint_, message);
  if (bridge_.canUseAlertView()) resizeForAlertView();
  colorGlyph(colors.glyph);
}

void SNAuthenticationView::fill(UILabel& label, NSLayoutConstraint& height,
                                const std::optional<std::string>& text) {
  label.setText(text.value_or(""));
  const CGSize room{UIScreen::mainScreen().bounds().size.width / 2, 9999};
  height.setConstant(sizeWithString(text, label.font(), room, label.lineBreakMode()).height);
}

void SNAuthenticationView::resizeForAlertView() {
  const double height = titleLabelHeightConstraint_->constant() + 150 - 20;
  setFrame(CGRectMake(0, 0, alertViewWidth, height));
  if (!heightConstraint_)
    heightConstraint_ = constrainToConstant(*this, {self(), NSLayoutAttribute::height}, height);
  heightConstraint_->setConstant(height);
}

CGSize SNAuthenticationView::sizeWithString(const std::optional<std::string>& text,
                                            const UIFont& withFont, CGSize constrainedToSize,
                                            NSLineBreakMode /*lineBreakMode*/) {
  if (!text) return {};
  const CGSize size = sizeOfText(*text, withFont, constrainedToSize.width);
  return {size.width, std::min(size.height, constrainedToSize.height)};
}

double SNAuthenticationView::preferredContentHeight() const {
  return glyphViewHeightConstraint_->constant() + titleLabelHeightConstraint_->constant() + gap +
         messageLabelHeightConstraint_->constant() + gap + bottomGap;
}

// --- Modes -------------------------------------------------------------------------------------

void SNAuthenticationView::switchToPasscodeView() {
  passcodeView_->reset();
  if (glyphView_) glyphView_->setHidden(/*hidden=*/true);
  glyphViewWidthConstraint_->setConstant(0);
  passcodeView_->setHidden(/*hidden=*/false);
  passcodeViewHeightConstraint_->setConstant(passcodeHeight);
  showKeyboard();
  mode_ = SNAuthenticationModePasscode;
}

void SNAuthenticationView::switchToGlyphView() {
  if (glyphView_) glyphView_->setHidden(/*hidden=*/false);
  glyphViewWidthConstraint_->setConstant(glyphSize);
  hideKeyboard();
  passcodeView_->setHidden(/*hidden=*/true);
  passcodeViewHeightConstraint_->setConstant(0);
  passcodeView_->reset();
  mode_ = SNAuthenticationModeGlyph;
}

void SNAuthenticationView::toggleAuthenticationModes() {
  if (mode_ == SNAuthenticationModePasscode)
    switchToGlyphView();
  else if (mode_ == SNAuthenticationModeGlyph)
    switchToPasscodeView();
}

void SNAuthenticationView::showKeyboard() {
  passcodeView_->showKeyboard();
}

void SNAuthenticationView::hideKeyboard() {
  passcodeView_->hideKeyboard();
}

void SNAuthenticationView::resetPasscodeState() {
  if (!passcodeView_->isHidden()) passcodeView_->_resetTextFields(/*delayed=*/false);
}

void SNAuthenticationView::animateFingerPrintActions(std::int64_t state, bool animated,
                                                     PKGlyphView::Completion completionHandler) {
  if (glyphView_ && glyphView_->setState)
    glyphView_->setState(state, animated, std::move(completionHandler));
}

bool SNAuthenticationView::_validatePasscode(const std::string& passcode) {
  const bool matched = settings_.validatePasscode(passcode);
  if (!matched) passcodeView_->_denyAccess();
  if (const auto receiver = delegate()) {
    if (matched)
      receiver->passcodeMatchedSuccessfully();
    else
      receiver->passcodeNotMatched();
  }
  return matched;
}

}  // namespace sentrel
