#include "sentrel/uikit/AlertPanel.h"

#include <utility>

#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UIScreen.h"
#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel {
namespace {

constexpr double margin = 16;
constexpr double textGap = 4;
constexpr double hairline = 0.5;
constexpr double cornerRadius = 14;

const UIClass& panelClass() {
  static const UIClass uiClass("_UIAlertControllerView", &UIView::staticClass());
  return uiClass;
}

std::shared_ptr<UIView> makeBackground() {
  const bool isDark = UIScreen::mainScreen().userInterfaceStyle() == UIUserInterfaceStyle::dark;
  auto blur = std::make_shared<UIVisualEffectView>(UIBlurEffect::effectWithStyle(isDark ? 2 : 0));
  blur->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  return blur;
}

/// Along the top of whatever it is put into.
std::shared_ptr<UIView> makeLineAbove() {
  auto line = std::make_shared<UIView>(CGRectMake(0, 0, 0, hairline));
  line->setBackgroundColor(UIColor::grayColor().colorWithAlphaComponent(0.35));
  line->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
  line->setUserInteractionEnabled(/*value=*/false);
  return line;
}

}  // namespace

std::shared_ptr<UIView> AlertPanel::makeButton(const std::string& title, bool isBold,
                                               bool isEnabled, UIColor color,
                                               std::function<void()> tapped) {
  const auto button = UIButton::buttonWithType(UIButtonType::system);
  button->setTitle(title, UIControlState::normal);
  button->setTitleColor(color, UIControlState::normal);
  button->titleLabel()->setFont(isBold ? UIFont::boldSystemFontOfSize(17)
                                       : UIFont::systemFontOfSize(17));
  button->titleLabel()->setAdjustsFontSizeToFitWidth(/*value=*/true);
  button->titleLabel()->setMinimumScaleFactor(0.5);
  button->addSubview(makeLineAbove());
  button->setEnabled(isEnabled);
  button->addTarget([tapped = std::move(tapped)](const auto&) { tapped(); },
                    UIControlEventTouchUpInside);
  return button;
}

AlertPanel::AlertPanel(const std::optional<std::string>& title,
                       const std::optional<std::string>& message,
                       UICollectionView::DataSource buttons)
    : UIView({}, panelClass()), buttons_(std::make_shared<AlertButtonList>(std::move(buttons))) {
  setClipsToBounds(/*value=*/true);
  layer().setCornerRadius(cornerRadius);
  addSubview(makeBackground());
  title_ = addText(title, UIFont::boldSystemFontOfSize(17));
  message_ = addText(message, UIFont::systemFontOfSize(13));
  addSubview(buttons_);
}

std::shared_ptr<UILabel> AlertPanel::addText(const std::optional<std::string>& text, UIFont font) {
  if (!text) return nullptr;
  auto label = std::make_shared<UILabel>();
  label->setText(*text);
  label->setFont(std::move(font));
  label->setNumberOfLines(0);
  label->setTextAlignment(NSTextAlignment::center);
  addSubview(label);
  return label;
}

void AlertPanel::setContent(const std::shared_ptr<UIView>& content,
                            std::function<double()> height) {
  if (content_ && content_->superview().get() == this) content_->removeFromSuperview();
  content_ = content;
  contentHeight_ = std::move(height);
  addSubview(content_);
  // Else the first round of its layout would break all its texts into lines without width.
  placeContent();
}

void AlertPanel::placeContent() {
  if (content_) content_->setFrame(CGRectMake(0, textsHeight(), width, contentHeight()));
}

double AlertPanel::textHeight(const UILabel& label) const {
  const auto size = label.intrinsicContentSize(width - 2 * margin);
  return size ? size->height : 0;
}

double AlertPanel::textsHeight() const {
  double height = margin;
  for (const auto& label : {title_, message_})
    if (label) height += textHeight(*label) + textGap;
  return height - textGap + margin;
}

CGRect AlertPanel::frameCenteredIn(const CGRect& bounds) const {
  const double height = textsHeight() + contentHeight() + buttons_->fittingHeight();
  return CGRectMake(bounds.midX() - width / 2, bounds.midY() - height / 2, width, height);
}

void AlertPanel::layoutSubviews() {
  UIView::layoutSubviews();
  double y = margin;
  for (const auto& label : {title_, message_}) {
    if (!label) continue;
    label->setFrame(CGRectMake(margin, y, width - 2 * margin, textHeight(*label)));
    y = label->frame().maxY() + textGap;
  }
  placeContent();
  buttons_->setFrame(
      CGRectMake(0, textsHeight() + contentHeight(), width, buttons_->fittingHeight()));
}

}  // namespace sentrel
