#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "sentrel/authui/SNAuthenticationDelegates.h"
#include "sentrel/authui/SNSimplePasscodeView.h"
#include "sentrel/platform/Export.h"
#include "sentrel/uikit/PKGlyphView.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

class Bridge;
class SNSettings;
struct PromptColors;

/// What a prompt asks for. Other values can be stored and mean nothing.
using SNAuthenticationMode = std::int64_t;
inline constexpr SNAuthenticationMode SNAuthenticationModeGlyph = 1;
inline constexpr SNAuthenticationMode SNAuthenticationModePasscode = 2;

/// What a prompt shows inside its alert: the biometric glyph or a passcode row of six digits, and
/// under them a title and a message. Without the glyph's class the place of the glyph stays empty.
class SENTREL_API SNAuthenticationView : public UIView, public SNSimplePasscodeViewDelegate {
 public:
  /// The current process's own view, which the legacy alert shows.
  static std::shared_ptr<SNAuthenticationView> sharedInstance();

  /// A complete view in glyph mode.
  static std::shared_ptr<SNAuthenticationView> initWithFrame(const CGRect& frame = {});

  static const UIClass& staticClass();

  /// A stored number: setting it changes nothing that is shown.
  SNAuthenticationMode currentAuthenticationMode() const noexcept { return mode_; }
  void setCurrentAuthenticationMode(SNAuthenticationMode mode) noexcept { mode_ = mode; }

  std::shared_ptr<SNAuthenticationViewDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(std::weak_ptr<SNAuthenticationViewDelegate> delegate) {
    delegate_ = std::move(delegate);
  }

  /// Null where the running system has no such class.
  const std::shared_ptr<PKGlyphView>& glyphView() const noexcept { return glyphView_; }
  const std::shared_ptr<SNSimplePasscodeView>& passcodeView() const noexcept {
    return passcodeView_;
  }
  const std::shared_ptr<UILabel>& titleLabel() const noexcept { return titleLabel_; }
  const std::shared_ptr<UILabel>& messageLabel() const noexcept { return messageLabel_; }
  /// Always null: a wrong passcode is told by a shake alone.
  std::shared_ptr<UILabel> passcodeErrorLabel() const noexcept { return nullptr; }

  /// Null until the first setup in a legacy alert.
  const std::shared_ptr<NSLayoutConstraint>& heightConstraint() const noexcept {
    return heightConstraint_;
  }
  /// The labels' two only remember the measured heights; no view has them.
  const std::shared_ptr<NSLayoutConstraint>& titleLabelHeightConstraint() const noexcept {
    return titleLabelHeightConstraint_;
  }
  const std::shared_ptr<NSLayoutConstraint>& messageLabelHeightConstraint() const noexcept {
    return messageLabelHeightConstraint_;
  }
  const std::shared_ptr<NSLayoutConstraint>& glyphViewWidthConstraint() const noexcept {
    return glyphViewWidthConstraint_;
  }
  const std::shared_ptr<NSLayoutConstraint>& glyphViewHeightConstraint() const noexcept {
    return glyphViewHeightConstraint_;
  }
  const std::shared_ptr<NSLayoutConstraint>& passcodeViewWidthConstraint() const noexcept {
    return passcodeViewWidthConstraint_;
  }
  const std::shared_ptr<NSLayoutConstraint>& passcodeViewHeightConstraint() const noexcept {
    return passcodeViewHeightConstraint_;
  }

  /// Points; the same in both modes.
  double preferredContentHeight() const;

  /// Shows the texts, forgets a typed passcode and takes on the present colours. No text at all
  /// takes no room.
  void setup(const std::optional<std::string>& title, const std::optional<std::string>& message);
  void setupGlyphViewTheme();

  void toggleAuthenticationModes();
  void switchToPasscodeView();
  void switchToGlyphView();

  void showKeyboard();
  void hideKeyboard();

  /// Forgets a typed passcode and takes the input back, while the row is shown.
  void resetPasscodeState();

  /// Brings the glyph to `state`. The completion may be empty; without a glyph it never runs.
  void animateFingerPrintActions(std::int64_t state, bool animated,
                                 PKGlyphView::Completion completionHandler);

  /// Tells the delegate whether it is the stored passcode, after a shake where it is not.
  bool _validatePasscode(const std::string& passcode) override;

  /// Points, unrounded; nothing for no text. The line-break mode has no influence.
  static CGSize sizeWithString(const std::optional<std::string>& text, const UIFont& withFont,
                               CGSize constrainedToSize, NSLineBreakMode lineBreakMode);

 private:
  SNAuthenticationView(const CGRect& frame, Bridge& bridge, const SNSettings& settings)
      : UIView(frame, staticClass()), bridge_(bridge), settings_(settings) {}

  void loadGlyphClass();
  PromptColors presentColors() const;
  void setupUI();
  void addGlyphView(const UIColor& color);
  void addPasscodeView(const UIColor& color);
  void addTitleLabel(const UIColor& color);
  void addMessageLabel(const UIColor& color);
  void colorGlyph(const UIColor& color);
  std::shared_ptr<UILabel> addLabel(const UIFont& font, const std::string& text,
                                    const UIColor& color);
  void fill(UILabel& label, NSLayoutConstraint& height, const std::optional<std::string>& text);
  void resizeForAlertView();
  std::shared_ptr<UIView> self();

  Bridge& bridge_;
  const SNSettings& settings_;
  SNAuthenticationMode mode_ = SNAuthenticationModeGlyph;
  std::weak_ptr<SNAuthenticationViewDelegate> delegate_;
  std::shared_ptr<PKGlyphView> glyphView_;
  std::shared_ptr<SNSimplePasscodeView> passcodeView_;
  std::shared_ptr<UILabel> titleLabel_;
  std::shared_ptr<UILabel> messageLabel_;
  std::shared_ptr<NSLayoutConstraint> heightConstraint_;
  std::shared_ptr<NSLayoutConstraint> titleLabelHeightConstraint_;
  std::shared_ptr<NSLayoutConstraint> messageLabelHeightConstraint_;
  std::shared_ptr<NSLayoutConstraint> glyphViewWidthConstraint_;
  std::shared_ptr<NSLayoutConstraint> glyphViewHeightConstraint_;
  std::shared_ptr<NSLayoutConstraint> passcodeViewWidthConstraint_;
  std::shared_ptr<NSLayoutConstraint> passcodeViewHeightConstraint_;
};

}  // namespace sentrel
