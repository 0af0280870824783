#include "sentrel/uikit/UINavigationBar.h"

#include <algorithm>
#include <utility>

#include "sentrel/uikit/UIApplication.h"

namespace sentrel {
namespace {

constexpr double margin = 8;
constexpr double hairlineHeight = 0.5;
constexpr double translucency = 0.94;

}  // namespace

UINavigationBar::UINavigationBar(const CGRect& frame, const UIClass& uiClass)
    : UIView(frame, uiClass),
      title_(std::make_shared<UILabel>()),
      left_(makeButton()),
      right_(makeButton()),
      hairline_(std::make_shared<UIView>()) {
  title_->setTextAlignment(NSTextAlignment::center);
  title_->setFont(UIFont::boldSystemFontOfSize(17));
  title_->setAdjustsFontSizeToFitWidth(/*value=*/true);
  title_->setMinimumScaleFactor(0.6);
  hairline_->setBackgroundColor(UIColor::secondaryLabelColor().colorWithAlphaComponent(0.5));
  for (const std::shared_ptr<UIView>& part :
       std::initializer_list<std::shared_ptr<UIView>>{title_, left_, right_, hairline_})
    addSubview(part);
  setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
  colour();
  showTop();
}

const UIClass& UINavigationBar::staticClass() {
  static const UIClass uiClass("UINavigationBar", &UIView::staticClass());
  return uiClass;
}

double UINavigationBar::heightWithStatusBar() {
  // On systems whose status bar does not turn with the interface its sides change places.
  const CGSize statusBar = UIApplication::sharedApplication().statusBarFrame().size;
  return stripHeight + std::min(statusBar.width, statusBar.height);
}

// --- Items ---------------------------------------------------------------------------------------

void UINavigationBar::setItems(std::vector<std::shared_ptr<UINavigationItem>> items) {
  items_ = std::move(items);
  if (const auto top = topItem())
    top->setOnChange([weak = weak_from_this()] {
      if (const auto self = std::static_pointer_cast<UINavigationBar>(weak.lock())) self->showTop();
    });
  showTop();
}

std::shared_ptr<UINavigationItem> UINavigationBar::topItem() const {
  return items_.empty() ? nullptr : items_.back();
}

bool UINavigationBar::showsBack() const {
  const auto top = topItem();
  return onBack_ && items_.size() > 1 && !top->leftBarButtonItem() && !top->hidesBackButton();
}

std::string UINavigationBar::leftTitle() const {
  const auto top = topItem();
  if (top && top->leftBarButtonItem()) return top->leftBarButtonItem()->title;
  if (!showsBack()) return "";
  const std::string& below = items_[items_.size() - 2]->title();
  return "‹ " + (below.empty() ? "Back" : below);
}

void UINavigationBar::showTop() {
  const auto top = topItem();
  title_->setText(top ? top->title() : "");
  left_->setTitle(leftTitle(), UIControlState::normal);
  left_->setHidden(leftTitle().empty());
  const bool hasRight = top && top->rightBarButtonItem();
  right_->setTitle(hasRight ? top->rightBarButtonItem()->title : "", UIControlState::normal);
  right_->setHidden(!hasRight);
  setNeedsLayout();
}

std::shared_ptr<UIButton> UINavigationBar::makeButton() {
  auto button = UIButton::buttonWithType(UIButtonType::system);
  button->addTarget(
      [](const auto& sender) {
        const auto bar = std::dynamic_pointer_cast<UINavigationBar>(sender->superview());
        if (bar) bar->press(*sender);
      },
      UIControlEventTouchUpInside);
  return button;
}

void UINavigationBar::press(const UIButton& button) {
  const auto top = topItem();
  if (!top) return;
  const auto item = &button == left_.get() ? top->leftBarButtonItem() : top->rightBarButtonItem();
  const auto action = item ? item->action : onBack_;
  if (action) action();
}

// --- Looks ---------------------------------------------------------------------------------------

void UINavigationBar::setTintColor(std::optional<UIColor> color) {
  tintColor_ = color;
  colour();
}

void UINavigationBar::setBarTintColor(std::optional<UIColor> color) {
  barTintColor_ = color;
  colour();
}

void UINavigationBar::setTranslucent(bool value) {
  translucent_ = value;
  colour();
}

void UINavigationBar::setTitleColor(std::optional<UIColor> color) {
  titleColor_ = color;
  colour();
}

void UINavigationBar::colour() {
  const UIColor bar = barTintColor_.value_or(UIColor::systemBackgroundColor());
  setBackgroundColor(translucent_ ? bar.colorWithAlphaComponent(translucency) : bar);
  title_->setTextColor(titleColor_.value_or(UIColor::labelColor()));
  for (const auto& button : {left_, right_})
    button->setTitleColor(tintColor_.value_or(UIColor::systemBlueColor()), UIControlState::normal);
}

void UINavigationBar::layoutSubviews() {
  UIView::layoutSubviews();
  const CGSize size = bounds().size;
  const double top = size.height - stripHeight;
  const double most = (size.width - 2 * margin) / 3;
  // A system button's title keeps its own margin on either side.
  const auto widthOf = [most](const UIButton& button) {
    return button.isHidden()
               ? 0
               : std::min(button.intrinsicContentSize(most).value_or(CGSize{}).width + 16, most);
  };
  left_->setFrame(CGRectMake(margin, top, widthOf(*left_), stripHeight));
  right_->setFrame(
      CGRectMake(size.width - margin - widthOf(*right_), top, widthOf(*right_), stripHeight));
  title_->setFrame(titleFrame());
  hairline_->setFrame(CGRectMake(0, size.height - hairlineHeight, size.width, hairlineHeight));
}

/// In the middle of the bar, or where the buttons leave more room.
CGRect UINavigationBar::titleFrame() const {
  const double start = left_->frame().maxX() + margin;
  const double end = right_->frame().origin.x - margin;
  const double half = std::min(bounds().size.width / 2 - start, end - bounds().size.width / 2);
  const double top = bounds().size.height - stripHeight;
  const double wanted = title_->intrinsicContentSize(bounds().size.width).value_or(CGSize{}).width;
  if (wanted > 2 * half) return CGRectMake(start, top, std::max(end - start, 0.0), stripHeight);
  return CGRectMake(bounds().size.width / 2 - half, top, 2 * half, stripHeight);
}

}  // namespace sentrel
