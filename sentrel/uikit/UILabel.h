#pragma once

#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIFont.h"
#include "sentrel/uikit/UITextAttributes.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

class SENTREL_API UILabel : public UIView {
 public:
  explicit UILabel(const CGRect& frame = {}, const UIClass& uiClass = staticClass());

  static const UIClass& staticClass();

  const std::string& text() const noexcept { return text_; }
  void setText(std::string text);
  const UIFont& font() const noexcept { return font_; }
  void setFont(UIFont font);
  const UIColor& textColor() const noexcept { return textColor_; }
  void setTextColor(UIColor color) { textColor_ = color; }
  NSTextAlignment textAlignment() const noexcept { return textAlignment_; }
  void setTextAlignment(NSTextAlignment alignment) noexcept { textAlignment_ = alignment; }
  NSLineBreakMode lineBreakMode() const noexcept { return lineBreakMode_; }
  void setLineBreakMode(NSLineBreakMode mode) noexcept { lineBreakMode_ = mode; }

  /// At most so many lines; 0 for as many as the text takes.
  int numberOfLines() const noexcept { return numberOfLines_; }
  void setNumberOfLines(int lines);

  /// Whether text that does not fit is drawn smaller, down to `minimumScaleFactor` of its font.
  bool adjustsFontSizeToFitWidth() const noexcept { return adjustsFontSizeToFitWidth_; }
  void setAdjustsFontSizeToFitWidth(bool value) noexcept { adjustsFontSizeToFitWidth_ = value; }
  /// 0 for no limit.
  double minimumScaleFactor() const noexcept { return minimumScaleFactor_; }
  void setMinimumScaleFactor(double factor) noexcept { minimumScaleFactor_ = factor; }

  std::optional<CGSize> intrinsicContentSize(double maxWidth) const override;

 private:
  std::string text_;
  UIFont font_ = UIFont::systemFontOfSize(17);
  UIColor textColor_ = UIColor::labelColor();
  NSTextAlignment textAlignment_ = NSTextAlignment::left;
  NSLineBreakMode lineBreakMode_ = NSLineBreakMode::byTruncatingTail;
  int numberOfLines_ = 1;
  bool adjustsFontSizeToFitWidth_ = false;
  double minimumScaleFactor_ = 0;
};

}  // namespace sentrel
