#pragma once

#include <memory>
#include <optional>
#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/NSRange.h"
#include "sentrel/uikit/UIFont.h"
#include "sentrel/uikit/UITextAttributes.h"
#include "sentrel/uikit/UITextFieldDelegate.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

enum class UIKeyboardType { standard = 0, numberPad = 4 };
enum class UITextBorderStyle { none = 0, roundedRect = 3 };

/// A line of text that the user edits while the field is the first responder.
class SENTREL_API UITextField : public UIView {
 public:
  explicit UITextField(const CGRect& frame = {}, const UIClass& uiClass = staticClass());
  ~UITextField() override;

  static const UIClass& staticClass();

  std::shared_ptr<UITextFieldDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(std::weak_ptr<UITextFieldDelegate> delegate) { delegate_ = std::move(delegate); }

  const std::string& text() const noexcept { return text_; }
  /// Not an edit: the delegate is not asked. Puts the caret at the end. Text set so is no secret;
  /// what a user types may be.
  void setText(std::string text);
  bool isSecureTextEntry() const noexcept { return secureTextEntry_; }
  void setSecureTextEntry(bool value) noexcept { secureTextEntry_ = value; }
  /// What is to be seen: the text, or a bullet for each of its characters.
  std::string displayedText() const;

  const UIFont& font() const noexcept { return font_; }
  void setFont(UIFont font);
  const UIColor& textColor() const noexcept { return textColor_; }
  void setTextColor(UIColor color) { textColor_ = color; }
  NSTextAlignment textAlignment() const noexcept { return textAlignment_; }
  void setTextAlignment(NSTextAlignment alignment) noexcept { textAlignment_ = alignment; }
  /// The caret's; none is the system's.
  const std::optional<UIColor>& tintColor() const noexcept { return tintColor_; }
  void setTintColor(std::optional<UIColor> color) { tintColor_ = color; }
  UIKeyboardType keyboardType() const noexcept { return keyboardType_; }
  void setKeyboardType(UIKeyboardType type) noexcept { keyboardType_ = type; }
  UITextBorderStyle borderStyle() const noexcept { return borderStyle_; }
  void setBorderStyle(UITextBorderStyle style) noexcept { borderStyle_ = style; }

  /// Empty where the caret stands.
  NSRange selectedRange() const noexcept { return selectedRange_; }
  void setSelectedRange(NSRange range) { selectedRange_ = rangeInsideText(text_, range); }

  // --- The user's side: through the delegate, and only while the field is first responder ----

  /// Types or pastes `text` over the selection. Whether the text was changed.
  bool insertText(const std::string& text);
  /// Deletes the selection, or the character before the caret; an empty field asks nobody.
  bool deleteBackward();
  bool replace(NSRange range, const std::string& text);

  /// Inside a window only, be it hidden or not, and where the delegate agrees.
  bool canBecomeFirstResponder() override;
  bool canResignFirstResponder() override;
  std::optional<CGSize> intrinsicContentSize(double maxWidth) const override;

 private:
  std::weak_ptr<UITextFieldDelegate> delegate_;
  std::string text_;
  bool wasTyped_ = false;
  NSRange selectedRange_;
  UIFont font_ = UIFont::systemFontOfSize(17);
  UIColor textColor_ = UIColor::labelColor();
  std::optional<UIColor> tintColor_;
  NSTextAlignment textAlignment_ = NSTextAlignment::left;
  UIKeyboardType keyboardType_ = UIKeyboardType::standard;
  UITextBorderStyle borderStyle_ = UITextBorderStyle::none;
  bool secureTextEntry_ = false;
};

}  // namespace sentrel
