#pragma once

#include <memory>
#include <string>

#include "sentrel/passcode/PasscodeAppearance.h"
#include "sentrel/passcode/PasscodeElements.h"
#include "sentrel/passcode/PasscodeLayout.h"
#include "sentrel/passcode/PasscodeOutcomes.h"

namespace sentrel {

/// The elements of a passcode screen in their places.
class PasscodeView final : public UIView {
 public:
  /// `appearance` outlives the view. Without digit boxes.
  static std::shared_ptr<PasscodeView> make(const CGRect& frame,
                                            const PasscodeAppearance& appearance);

  static const UIClass& staticClass();

  const PasscodeElements& elements() const noexcept { return elements_; }

  void makeDigitBoxes(std::int64_t count, const std::weak_ptr<UITextFieldDelegate>& delegate);
  void show(const PasscodeDisplay& display);
  void setForm(bool isSimple, UIKeyboardType keyboardType);

  /// Null takes the bar away.
  void setNavBar(std::shared_ptr<UINavigationBar> navBar);
  /// What bars above the view take of it.
  void setTopInset(double inset);

  void layoutSubviews() override;

 private:
  PasscodeView(const CGRect& frame, const PasscodeAppearance& appearance)
      : UIView(frame, staticClass()), appearance_(appearance) {}

  void build();
  void buildOverlay();
  std::shared_ptr<UILabel> makeLabel() const;
  std::shared_ptr<UITextField> makeDigitField() const;
  void placeElements();
  PasscodeContent content() const;

  const PasscodeAppearance& appearance_;
  PasscodeElements elements_;
  double topInset_ = 0;
  bool isSimple_ = true;
};

}  // namespace sentrel
