#include "sentrel/passcode/PasscodeView.h"

#include <algorithm>
#include <utility>

#include "sentrel/effects/Constraints.h"
#include "sentrel/uikit/UIKeyboard.h"

namespace sentrel {
namespace {

constexpr double overlayMargin = 10;
constexpr double overlayGap = 5;
/// How much of the overlay's height its text is high.
constexpr double overlayTextShare = 0.55;
constexpr double smallestButton = 44;
/// Free on either side of a failure's text, beside the spaces that it ends in.
constexpr double pillPadding = 6;

CGAffineTransform scaling(double factor) {
  return {factor, 0, 0, factor, 0, 0};
}

}  // namespace

std::shared_ptr<PasscodeView> PasscodeView::make(const CGRect& frame,
                                                 const PasscodeAppearance& appearance) {
  std::shared_ptr<PasscodeView> view(new PasscodeView(frame, appearance));
  view->build();
  return view;
}

const UIClass& PasscodeView::staticClass() {
  static const UIClass uiClass("PasscodeView", &UIView::staticClass());
  return uiClass;
}

// --- Elements ------------------------------------------------------------------------------------

void PasscodeView::build() {
  constexpr unsigned fills = UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight;
  setBackgroundColor(appearance_.backgroundColor);
  elements_.backgroundImageView = std::make_shared<UIImageView>(bounds());
  elements_.backgroundImageView->setImage(appearance_.backgroundImage);
  elements_.backgroundImageView->setAutoresizingMask(fills);
  elements_.animatingView = std::make_shared<UIView>(bounds());
  elements_.animatingView->setAutoresizingMask(fills);
  addSubview(elements_.backgroundImageView);
  addSubview(elements_.animatingView);

  elements_.enterPasscodeLabel = makeLabel();
  elements_.enterPasscodeInfoLabel = makeLabel();
  elements_.failedAttemptLabel = makeLabel();
  for (const auto& label : {elements_.enterPasscodeLabel, elements_.enterPasscodeInfoLabel,
                            elements_.failedAttemptLabel})
    elements_.animatingView->addSubview(label);
  buildOverlay();
}

std::shared_ptr<UILabel> PasscodeView::makeLabel() const {
  auto label = std::make_shared<UILabel>();
  label->setBackgroundColor(appearance_.enterPasscodeLabelBackgroundColor);
  label->setTextColor(appearance_.labelTextColor);
  label->setFont(appearance_.labelFont);
  label->setTextAlignment(NSTextAlignment::center);
  label->setLineBreakMode(NSLineBreakMode::byWordWrapping);
  label->setNumberOfLines(0);
  return label;
}

void PasscodeView::buildOverlay() {
  using enum NSLayoutAttribute;
  const auto overlay = std::make_shared<UIView>();
  const auto field = std::make_shared<UITextField>();
  const auto button = UIButton::buttonWithType(UIButtonType::custom);
  elements_.complexPasscodeOverlayView = overlay;
  elements_.passcodeTextField = field;
  elements_.OKButton = button;

  const double textHeight = (appearance_.passcodeOverlayHeight - 2 * overlayGap) * overlayTextShare;
  overlay->setBackgroundColor(appearance_.passcodeBackgroundColor);
  field->setBorderStyle(UITextBorderStyle::roundedRect);
  field->setTextColor(appearance_.passcodeTextColor);
  field->setFont(UIFont::fontWithName(appearance_.passcodeFont.name,
                                      std::min(appearance_.passcodeFont.size, textHeight)));
  field->setSecureTextEntry(/*value=*/true);
  button->titleLabel()->setFont(appearance_.labelFont);
  button->setBackgroundColor(appearance_.enterPasscodeLabelBackgroundColor);
  button->setTitleColor(appearance_.labelTextColor, UIControlState::normal);
  button->setTitleColor(appearance_.labelTextColor.colorWithAlphaComponent(0.4),
                        UIControlState::highlighted);

  elements_.animatingView->addSubview(overlay);
  overlay->addSubview(field);
  overlay->addSubview(button);
  constrain(*overlay, {field, left}, {overlay, left}, 1, overlayMargin);
  constrain(*overlay, {button, left}, {field, right}, 1, overlayGap);
  constrain(*overlay, {button, right}, {overlay, right}, 1, -overlayMargin);
  constrainToConstant(*overlay, {button, width}, smallestButton * appearance_.fontSizeModifier);
  for (const std::shared_ptr<UIView>& each :
       std::initializer_list<std::shared_ptr<UIView>>{field, button}) {
    constrain(*overlay, {each, top}, {overlay, top}, 1, overlayGap);
    constrain(*overlay, {each, bottom}, {overlay, bottom}, 1, -overlayGap);
  }
}

std::shared_ptr<UITextField> PasscodeView::makeDigitField() const {
  auto field = std::make_shared<UITextField>();
  field->setBackgroundColor(appearance_.passcodeBackgroundColor);
  field->setTextAlignment(NSTextAlignment::center);
  field->setText(appearance_.passcodeCharacter);
  field->setTextColor(appearance_.passcodeTextColor);
  field->setFont(appearance_.passcodeFont);
  field->setBorderStyle(UITextBorderStyle::none);
  field->setTintColor(UIColor::clearColor());
  return field;
}

void PasscodeView::makeDigitBoxes(std::int64_t count,
                                  const std::weak_ptr<UITextFieldDelegate>& delegate) {
  for (const auto& box : elements_.digitTextFieldsArray)
    box->removeFromSuperview();
  elements_.digitTextFieldsArray.clear();
  for (std::int64_t made = 0; made < count; ++made) {
    const auto box = makeDigitField();
    box->setDelegate(delegate);
    box->setHidden(!isSimple_);
    elements_.digitTextFieldsArray.push_back(box);
    elements_.animatingView->addSubview(box);
  }
  setNeedsLayout();
}

// --- What is shown -------------------------------------------------------------------------------

void PasscodeView::show(const PasscodeDisplay& display) {
  const bool isFailure = display.failureLook == PasscodeDisplay::FailureLook::failure;
  elements_.enterPasscodeLabel->setText(display.prompt);
  elements_.enterPasscodeInfoLabel->setText(display.info);
  elements_.enterPasscodeInfoLabel->setHidden(display.isInfoHidden);
  UILabel& failure = *elements_.failedAttemptLabel;
  failure.setText(display.failure);
  failure.setHidden(display.isFailureHidden);
  failure.setBackgroundColor(isFailure ? appearance_.failedAttemptLabelBackgroundColor
                                       : UIColor::clearColor());
  failure.setTextColor(isFailure ? appearance_.failedAttemptLabelTextColor
                                 : appearance_.labelTextColor);
  failure.layer().setBorderWidth(0);
  failure.layer().setCornerRadius(display.failureCornerRadius);
  failure.setClipsToBounds(display.failureCornerRadius > 0);
  elements_.OKButton->setHidden(display.isOKButtonHidden);
  elements_.animatingView->setHidden(display.isContainerHidden);
  for (std::size_t at = 0; at < elements_.digitTextFieldsArray.size(); ++at)
    elements_.digitTextFieldsArray[at]->setSecureTextEntry(display.maskedBoxes > at);
  setNeedsLayout();
}

void PasscodeView::setForm(bool isSimple, UIKeyboardType keyboardType) {
  isSimple_ = isSimple;
  elements_.complexPasscodeOverlayView->setHidden(isSimple);
  elements_.passcodeTextField->setKeyboardType(keyboardType);
  for (const auto& box : elements_.digitTextFieldsArray)
    box->setHidden(!isSimple);
  setNeedsLayout();
}

void PasscodeView::setNavBar(std::shared_ptr<UINavigationBar> navBar) {
  if (elements_.navBar) elements_.navBar->removeFromSuperview();
  elements_.navBar = std::move(navBar);
  if (elements_.navBar) addSubview(elements_.navBar);
}

void PasscodeView::setTopInset(double inset) {
  topInset_ = inset;
  setNeedsLayout();
}

// --- Layout --------------------------------------------------------------------------------------

void PasscodeView::layoutSubviews() {
  UIView::layoutSubviews();
  if (elements_.navBar)
    elements_.navBar->setFrame(
        CGRectMake(0, 0, bounds().size.width, UINavigationBar::heightWithStatusBar()));
  placeElements();
}

PasscodeContent PasscodeView::content() const {
  const CGSize size = elements_.animatingView->bounds().size;
  const double most = passcodeTextWidth(size.width);
  const auto sizeOf = [most](const UIView& view) {
    return view.intrinsicContentSize(most).value_or(CGSize{});
  };
  const auto& boxes = elements_.digitTextFieldsArray;
  const double radius = elements_.failedAttemptLabel->layer().cornerRadius();
  CGSize failure = sizeOf(*elements_.failedAttemptLabel);
  failure = {std::min(failure.width + 2 * pillPadding, most), std::max(failure.height, 2 * radius)};
  return {
      .screen = size,
      .top = topInset_,
      .bottom = elements_.passcodeTextField->isFirstResponder() ? systemKeyboardHeight(size) : 0,
      .isSimple = isSimple_,
      .boxes = static_cast<int>(boxes.size()),
      .prompt = sizeOf(*elements_.enterPasscodeLabel),
      .info = sizeOf(*elements_.enterPasscodeInfoLabel),
      .failure = failure,
      .hasFailure = !elements_.failedAttemptLabel->isHidden()};
}

void PasscodeView::placeElements() {
  const PasscodePlaces places = placePasscode(content(), appearance_);
  elements_.enterPasscodeLabel->setFrame(places.prompt);
  elements_.enterPasscodeInfoLabel->setFrame(places.info);
  elements_.failedAttemptLabel->setFrame(places.failure);
  elements_.complexPasscodeOverlayView->setFrame(places.overlay);
  for (std::size_t at = 0; at < places.boxCenters.size(); ++at) {
    UITextField& box = *elements_.digitTextFieldsArray[at];
    const CGSize own = box.intrinsicContentSize(appearance_.horizontalGap).value_or(CGSize{});
    box.setTransform(scaling(places.boxScale));
    box.setBounds({{}, {appearance_.horizontalGap, own.height}});
    box.setCenter(places.boxCenters[at]);
  }
}

}  // namespace sentrel
