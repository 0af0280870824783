#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UINavigationItem.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// Title and buttons of the last of its items, in a strip of 44 points at its bottom. What is above
/// belongs to the status bar.
class SENTREL_API UINavigationBar : public UIView {
 public:
  explicit UINavigationBar(const CGRect& frame = {}, const UIClass& uiClass = staticClass());

  static const UIClass& staticClass();

  /// Points.
  static constexpr double stripHeight = 44;
  /// For a bar at the top of the screen.
  static double heightWithStatusBar();

  const std::vector<std::shared_ptr<UINavigationItem>>& items() const noexcept { return items_; }
  void setItems(std::vector<std::shared_ptr<UINavigationItem>> items);
  /// Null without items.
  std::shared_ptr<UINavigationItem> topItem() const;

  /// What the button to the item below does; without it there is no such button.
  void setOnBack(std::function<void()> onBack) { onBack_ = std::move(onBack); }

  /// The buttons'; none is the system's.
  const std::optional<UIColor>& tintColor() const noexcept { return tintColor_; }
  void setTintColor(std::optional<UIColor> color);
  /// The bar's own; none is the system's background.
  const std::optional<UIColor>& barTintColor() const noexcept { return barTintColor_; }
  void setBarTintColor(std::optional<UIColor> color);
  bool isTranslucent() const noexcept { return translucent_; }
  void setTranslucent(bool value);
  /// The title's; none is the system's label colour.
  const std::optional<UIColor>& titleColor() const noexcept { return titleColor_; }
  void setTitleColor(std::optional<UIColor> color);

  void layoutSubviews() override;

 private:
  static std::shared_ptr<UIButton> makeButton();
  bool showsBack() const;
  std::string leftTitle() const;
  void press(const UIButton& button);
  void showTop();
  void colour();
  CGRect titleFrame() const;

  std::vector<std::shared_ptr<UINavigationItem>> items_;
  std::function<void()> onBack_;
  std::shared_ptr<UILabel> title_;
  std::shared_ptr<UIButton> left_;
  std::shared_ptr<UIButton> right_;
  std::shared_ptr<UIView> hairline_;
  std::optional<UIColor> tintColor_;
  std::optional<UIColor> barTintColor_;
  std::optional<UIColor> titleColor_;
  bool translucent_ = true;
};

}  // namespace sentrel
