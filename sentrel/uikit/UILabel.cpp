#include "sentrel/uikit/UILabel.h"

#include <utility>

#include "sentrel/uikit/TextSize.h"

namespace sentrel {

UILabel::UILabel(const CGRect& frame, const UIClass& uiClass) : UIView(frame, uiClass) {
  setUserInteractionEnabled(/*value=*/false);
}

const UIClass& UILabel::staticClass() {
  static const UIClass uiClass("UILabel", &UIView::staticClass());
  return uiClass;
}

void UILabel::setText(std::string text) {
  if (text == text_) return;
  text_ = std::move(text);
  setNeedsLayout();
}

void UILabel::setFont(UIFont font) {
  if (font == font_) return;
  font_ = std::move(font);
  setNeedsLayout();
}

void UILabel::setNumberOfLines(int lines) {
  if (lines == numberOfLines_) return;
  numberOfLines_ = lines;
  setNeedsLayout();
}

std::optional<CGSize> UILabel::intrinsicContentSize(double maxWidth) const {
  if (text_.empty()) return CGSize();
  return contentSize(sizeOfText(text_, font_, maxWidth), font_, numberOfLines_);
}

}  // namespace sentrel
