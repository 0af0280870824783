#include "sentrel/uikit/UITextField.h"

#include <utility>

#include "sentrel/platform/SecretText.h"
#include "sentrel/uikit/TextSize.h"

namespace sentrel {

UITextField::UITextField(const CGRect& frame, const UIClass& uiClass) : UIView(frame, uiClass) {}

const UIClass& UITextField::staticClass() {
  static const UIClass uiClass("UITextField", &UIView::staticClass());
  return uiClass;
}

UITextField::~UITextField() {
  wipe(text_);
}

/// What was typed may have been a passcode: no copy of it stays behind.
void UITextField::setText(std::string text) {
  wipe(text_);
  text_ = text;
  wipe(text);
  wasTyped_ = false;
  selectedRange_ = {utf16Length(text_), 0};
  setNeedsLayout();
}

void UITextField::setFont(UIFont font) {
  if (font == font_) return;
  font_ = std::move(font);
  setNeedsLayout();
}

std::string UITextField::displayedText() const {
  if (!secureTextEntry_) return text_;
  std::string bullets;
  for (std::size_t count = characterCount(text_); count > 0; --count)
    bullets += "\u2022";
  return bullets;
}

bool UITextField::insertText(const std::string& text) {
  return replace(selectedRange_, text);
}

bool UITextField::deleteBackward() {
  if (selectedRange_.length > 0) return replace(selectedRange_, "");
  if (selectedRange_.location == 0) return false;
  return replace({selectedRange_.location - 1, 1}, "");
}

bool UITextField::replace(NSRange range, const std::string& text) {
  if (!isFirstResponder()) return false;
  const auto self = shared_from_this();
  const NSRange inside = rangeInsideText(text_, range);
  const auto asked = delegate();
  if (asked && !asked->textField(*this, inside, text)) return false;
  // The delegate may have changed the text meanwhile: what is replaced is still inside it.
  const NSRange replaced = rangeInsideText(text_, inside);
  setText(stringByReplacingCharactersInRange(text_, replaced, text));
  wasTyped_ = true;
  setSelectedRange({replaced.location + utf16Length(text), 0});
  return true;
}

bool UITextField::canBecomeFirstResponder() {
  if (!window()) return false;
  const auto asked = delegate();
  return !asked || asked->textFieldShouldBeginEditing(*this);
}

bool UITextField::canResignFirstResponder() {
  const auto asked = delegate();
  return !asked || asked->textFieldShouldEndEditing(*this);
}

/// The same whether masked or not, so that a field stays where it is while it is masked.
std::optional<CGSize> UITextField::intrinsicContentSize(double maxWidth) const {
  const auto measure = wasTyped_ ? sizeOfTypedText : sizeOfText;
  return contentSize(measure(text_, font_, maxWidth), font_, 1);
}

}  // namespace sentrel
