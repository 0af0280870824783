#include "sentrel/effects/ProtectionOverlay.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "sentrel/bridge/SNUtils.h"
#include "sentrel/effects/Constraints.h"
#include "sentrel/effects/TextHeight.h"
#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel {
namespace {

constexpr const char* actionKey = "sn__AlertAction";
constexpr double textWidthShare = 0.8;

std::shared_ptr<UIView> shared(UIView& view) {
  return std::static_pointer_cast<UIView>(view.shared_from_this());
}

/// "caption+label": the caption ends at the first plus, the label begins after the last.
std::optional<std::string> captionOf(const std::string& title) {
  const std::size_t plus = title.find('+');
  if (plus == std::string::npos) return std::nullopt;
  return title.substr(0, plus);
}

std::string buttonLabelOf(const std::string& title) {
  const std::size_t plus = title.rfind('+');
  return plus == std::string::npos ? title : title.substr(plus + 1);
}

double coverRadius(const UIView& host) {
  if (const double radius = host.layer().cornerRadius(); radius > 0) return radius;
  if (!SNUtils::isIOS11()) return 6;
  if (host.isMemberOfClassNamed("CAMImageWell")) return 5;
  return SNUtils::supportsFaceID() ? 38 : 6;
}

std::shared_ptr<UIVisualEffectView> addCover(UIView& host, std::int64_t style) {
  sn__removeBlurEffects(host);
  host.setBackgroundColor(UIColor::clearColor());
  auto cover = std::make_shared<UIVisualEffectView>(UIBlurEffect::effectWithStyle(style));
  cover->setFrame(host.bounds());
  cover->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  cover->setTag(overlayBlurTag);
  cover->setUserInteractionEnabled(/*value=*/false);
  cover->layer().setCornerRadius(coverRadius(host));
  cover->setClipsToBounds(/*value=*/true);
  host.addSubview(cover);
  host.bringSubviewToFront(cover);
  return cover;
}

/// Puts the elements of one overlay onto its cover.
class OverlayContent {
 public:
  OverlayContent(UIView& host, UIVisualEffectView& cover, std::int64_t style)
      : host_(host),
        surface_(SNUtils::isIOS11() ? *cover.contentView() : cover),
        size_(host.bounds().size),
        dark_(style == overlayDarkStyle) {}

  void addMessage(const std::string& message, bool hasActions);
  void addIcon(const UIAlertAction& action);
  void addButton(const std::shared_ptr<UIAlertAction>& action, int number);
  void addFooter();

 private:
  static constexpr int messageLines = 2;
  static constexpr double messageHeight = messageLines * 54;

  UIColor colorOr(const UIColor& lightStyleColor) const {
    return dark_ ? UIColor::colorWithWhite(1, 0.7) : lightStyleColor;
  }
  UIColor textColor() const { return colorOr(UIColor::darkGrayColor()); }

  /// Where the icon stands above and the buttons hang below.
  double baseLine() const { return (size_.height - messageHeight) * 0.5; }

  std::shared_ptr<UILabel> addLabel(const std::string& text, const UIFont& font,
                                    const UIColor& color);
  void constrainLabel(const std::shared_ptr<UILabel>& label, double labelHeight);
  void addCaption(const std::string& caption, double top);
  void placeButton(UIButton& button, int number);

  UIView& host_;
  UIView& surface_;
  CGSize size_;
  bool dark_;
};

/// Takes the message down to ten points, on each generation from its own size; the footer shrinks
/// by the same factor.
double minimumScale() {
  return SNUtils::isIOS9() ? 2.0 / 9 : 0.4;
}

std::shared_ptr<UILabel> OverlayContent::addLabel(const std::string& text, const UIFont& font,
                                                  const UIColor& color) {
  auto label = std::make_shared<UILabel>();
  label->setFont(font);
  label->setText(text);
  label->setBackgroundColor(UIColor::clearColor());
  label->setTextColor(color);
  label->setTextAlignment(NSTextAlignment::center);
  label->setAdjustsFontSizeToFitWidth(/*value=*/true);
  surface_.addSubview(label);
  return label;
}

void OverlayContent::constrainLabel(const std::shared_ptr<UILabel>& label, double labelHeight) {
  using enum NSLayoutAttribute;
  const auto host = shared(host_);
  constrain(host_, {label, centerX}, {host, centerX});
  constrain(host_, {label, width}, {host, width}, textWidthShare);
  constrainToConstant(host_, {label, height}, labelHeight);
}

void OverlayContent::addMessage(const std::string& message, bool hasActions) {
  using enum NSLayoutAttribute;
  const UIFont font = UIFont::boldSystemFontOfSize(SNUtils::isIOS9() ? 45 : 25);
  const auto label = addLabel(message, font, textColor());
  label->setNumberOfLines(messageLines);
  label->setTag(overlayMessageTag);
  label->setMinimumScaleFactor(minimumScale());
  constrainLabel(label, messageHeight);
  const auto host = shared(host_);
  if (hasActions)
    constrain(host_, {label, top}, {host, top}, 1, size_.height * 0.5 - messageHeight);
  else
    constrain(host_, {label, centerY}, {host, centerY});
}

void OverlayContent::addIcon(const UIAlertAction& action) {
  if (!action.image()) return;
  const auto caption = captionOf(action.title());
  const double top = baseLine() - (caption ? 120 : 100);
  const auto icon =
      std::make_shared<UIImageView>(CGRectMake((size_.width - 50) * 0.5, top, 50, 50));
  icon->layer().setCornerRadius(5);
  icon->layer().setMasksToBounds(/*value=*/true);
  icon->setImage(action.image());
  surface_.addSubview(icon);
  addCaption(caption.value_or(""), top + 55);
}

void OverlayContent::addCaption(const std::string& caption, double top) {
  const auto label = addLabel(caption, UIFont::boldSystemFontOfSize(12), textColor());
  label->setNumberOfLines(1);
  label->setFrame(CGRectMake(0, top, size_.width, 15));
}

void OverlayContent::addButton(const std::shared_ptr<UIAlertAction>& action, int number) {
  const auto button = UIButton::buttonWithType(UIButtonType::custom);
  const std::weak_ptr<UIView> weakHost = shared(host_);
  button->addTarget(
      [weakHost](const std::shared_ptr<UIButton>& sender) {
        if (const auto host = weakHost.lock()) sn__handleButtonAction(*host, *sender);
      },
      UIControlEventTouchUpInside);
  button->setTitle(buttonLabelOf(action->title()), UIControlState::normal);
  button->setTitleColor(textColor(), UIControlState::normal);
  surface_.addSubview(button);
  setSn__AlertAction(*button, action);
  button->layer().setBorderColor(textColor());
  button->layer().setBorderWidth(2);
  button->layer().setCornerRadius(5);
  button->layer().setMasksToBounds(/*value=*/true);
  placeButton(*button, number);
}

void OverlayContent::placeButton(UIButton& button, int number) {
  const auto [width, height] = findHeightForText(
      button.currentTitle(), textWidthShare * size_.width, button.titleLabel()->font());
  const double buttonHeight = height + 20;
  // The left edge stands off the middle by the button's height, whatever its width.
  button.setFrame(CGRectMake(size_.width * 0.5 - buttonHeight,
                             baseLine() + number * 20 + number * buttonHeight, width + 30,
                             buttonHeight));
}

void OverlayContent::addFooter() {
  using enum NSLayoutAttribute;
  const auto label =
      addLabel(std::string(SNUtils::localizedString("Brought to you by Quorvin")),
               UIFont::italicSystemFontOfSize(11), colorOr(UIColor::lightGrayColor()));
  label->setNumberOfLines(1);
  label->setTag(overlayFooterTag);
  label->setMinimumScaleFactor(minimumScale());
  constrainLabel(label, 25);
  constrain(host_, {label, bottom}, {shared(host_), bottom}, 1, -5);
}

}  // namespace

void sn__applyBlurEffects(UIView& view, std::int64_t style) {
  addCover(view, style);
}

void sn__applyBlurEffectsWithMessage(UIView& view, const std::string& message) {
  sn__applyBlurEffects(view, overlayLightStyle, message);
}

void sn__applyBlurEffects(UIView& view, std::int64_t style, const std::string& message,
                          const UIAlertActions& actions) {
  const auto cover = addCover(view, style);
  cover->setUserInteractionEnabled(!actions.empty());
  OverlayContent content(view, *cover, style);
  content.addMessage(message, !actions.empty());
  if (!actions.empty()) content.addIcon(*actions.front());
  int number = 0;
  for (const auto& action : actions)
    content.addButton(action, ++number);
  content.addFooter();
}

void sn__removeBlurEffects(UIView& view) {
  std::vector<std::shared_ptr<UIView>> overlays;
  std::ranges::copy_if(view.subviews(), std::back_inserter(overlays),
                       [](const auto& subview) { return subview->tag() == overlayBlurTag; });
  for (const auto& overlay : overlays)
    overlay->removeFromSuperview();
}

void sn__handleButtonAction(UIView& /*view*/, const UIButton& button) {
  const auto action = sn__AlertAction(button);
  if (action && action->handler()) action->handler()(action);
}

std::shared_ptr<UIAlertAction> sn__AlertAction(const UIView& view) {
  return view.associatedObject<UIAlertAction>(actionKey);
}

void setSn__AlertAction(UIView& view, std::shared_ptr<UIAlertAction> action) {
  view.setAssociatedObject(actionKey, std::move(action));
}

}  // namespace sentrel
