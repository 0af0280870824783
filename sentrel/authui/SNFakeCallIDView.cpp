#include "sentrel/authui/SNFakeCallIDView.h"

#include "sentrel/bridge/SNUtils.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel {
namespace {

struct Colors {
  UIColor name;
  UIColor detail;
};

/// Asks once for all lines: the home screen may have to be asked.
Colors presentColors() {
  if (SNUtils::isDarkModeEnabled()) return {UIColor::labelColor(), UIColor::secondaryLabelColor()};
  return {UIColor::colorWithWhite(1, 0.8), UIColor::colorWithWhite(1, 0.8)};
}

}  // namespace

SNFakeCallIDView::SNFakeCallIDView(const CGRect& frame) : UIView(frame, staticClass()) {
  const auto [nameColor, detailColor] = presentColors();
  callerNameLabel_ = createLabel(
      nameColor, SNUtils::isIOS11() ? UIFontTextStyle::largeTitle : UIFontTextStyle::title1);
  callerIDLabel_ = createLabel(detailColor, UIFontTextStyle::subheadline);
  sentrelCopyLabel_ = createLabel(detailColor, UIFontTextStyle::footnote);
  sentrelCopyLabel_->setTextAlignment(NSTextAlignment::right);
  sentrelCopyLabel_->setAlpha(0.6);
  addSubview(callerNameLabel_);
  addSubview(callerIDLabel_);
  addSubview(sentrelCopyLabel_);
  setUserInteractionEnabled(/*value=*/false);
}

const UIClass& SNFakeCallIDView::staticClass() {
  static const UIClass uiClass("SNFakeCallIDView", &UIView::staticClass());
  return uiClass;
}

std::shared_ptr<UILabel> SNFakeCallIDView::createLabel(const UIColor& textColor,
                                                       UIFontTextStyle fontStyle) {
  auto label = std::make_shared<UILabel>();
  label->setTextAlignment(NSTextAlignment::center);
  label->setTextColor(textColor);
  label->setFont(UIFont::preferredFontForTextStyle(fontStyle));
  label->setAdjustsFontSizeToFitWidth(/*value=*/true);
  return label;
}

void SNFakeCallIDView::layoutSubviews() {
  UIView::layoutSubviews();
  const CGRect area = bounds();
  const double left = area.origin.x + 10;
  // The bounds' own origin counts on both sides, as it always has.
  const double width = area.size.width - 2 * left;
  callerNameLabel_->setFrame(CGRectMake(left, area.origin.y + 5, width, 40));
  callerIDLabel_->setFrame(CGRectMake(left, callerNameLabel_->frame().maxY() + 10, width, 24));
  sentrelCopyLabel_->setFrame(CGRectMake(left, area.size.height - 12, width, 10));
}

void SNFakeCallIDView::updateData() {
  const auto [nameColor, detailColor] = presentColors();
  callerNameLabel_->setTextColor(nameColor);
  callerIDLabel_->setTextColor(detailColor);
  sentrelCopyLabel_->setTextColor(detailColor);
  const SNSettings& settings = SNSettings::sharedSettings();
  callerNameLabel_->setText(settings.callerNameText());
  callerIDLabel_->setText(settings.callerLabelText());
  sentrelCopyLabel_->setText(settings.sentrelLabelText());
}

}  // namespace sentrel
