#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "sentrel/uikit/AlertButtonList.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// The box that both generations of alerts show: texts, content, buttons.
class AlertPanel final : public UIView {
 public:
  static constexpr double width = 270;

  /// A button as alerts have them. `tapped` may not keep the alert alive.
  static std::shared_ptr<UIView> makeButton(const std::string& title, bool isBold, bool isEnabled,
                                            UIColor color, std::function<void()> tapped);

  AlertPanel(const std::optional<std::string>& title, const std::optional<std::string>& message,
             UICollectionView::DataSource buttons);

  /// `height` is asked at every layout. Null takes the content away.
  void setContent(const std::shared_ptr<UIView>& content, std::function<double()> height);

  const std::shared_ptr<AlertButtonList>& buttons() const noexcept { return buttons_; }

  /// The place of an alert of this size in the middle of `bounds`.
  CGRect frameCenteredIn(const CGRect& bounds) const;

  void layoutSubviews() override;

 private:
  std::shared_ptr<UILabel> addText(const std::optional<std::string>& text, UIFont font);
  double textHeight(const UILabel& label) const;
  double textsHeight() const;
  void placeContent();
  double contentHeight() const { return content_ ? contentHeight_() : 0; }

  std::shared_ptr<UILabel> title_;
  std::shared_ptr<UILabel> message_;
  std::shared_ptr<UIView> content_;
  std::function<double()> contentHeight_;
  std::shared_ptr<AlertButtonList> buttons_;
};

}  // namespace sentrel
