#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UIColor.h"
#include "sentrel/uikit/UIFont.h"
#include "sentrel/uikit/UIImage.h"

namespace sentrel {

/// What a passcode screen looks like, by the names of its properties: plain data. Lengths are in
/// points. A change shows when the elements are built the next time.
struct SENTREL_API PasscodeAppearance {
  std::int64_t coverViewTag = 994499;
  bool hidesBackButton = true;
  bool hidesCancelButton = true;
  /// What an empty digit box shows: an em dash.
  std::string passcodeCharacter = "—";

  double fontSizeModifier = 1;
  double horizontalGap = 40;
  double verticalGap = 25;
  /// How much lower than its place everything stands.
  double verticalOffset = 0;
  double modifierForBottomVerticalGap = 3;
  double failedAttemptLabelGap = 73;
  double passcodeOverlayHeight = 40;

  double labelFontSize = 15;
  double passcodeFontSize = 33;
  UIFont labelFont = UIFont::fontWithName("AvenirNext-Regular", 15);
  UIFont passcodeFont = UIFont::fontWithName("AvenirNext-Regular", 33);

  UIColor backgroundColor = UIColor::clearColor();
  UIColor coverViewBackgroundColor = UIColor::clearColor();
  UIColor passcodeBackgroundColor = UIColor::clearColor();
  UIColor failedAttemptLabelBackgroundColor = UIColor::clearColor();
  UIColor enterPasscodeLabelBackgroundColor = UIColor::clearColor();
  UIColor labelTextColor = UIColor::clearColor();
  UIColor passcodeTextColor = UIColor::clearColor();
  UIColor failedAttemptLabelTextColor = UIColor::clearColor();

  // Left unset: the system's.
  std::optional<UIColor> navigationBarTintColor;
  std::optional<UIColor> navigationTintColor;
  std::optional<UIColor> navigationTitleColor;
  std::shared_ptr<const UIImage> backgroundImage;
  bool navigationBarTranslucent = false;

  /// What a new screen has. `isDarkModeEnabled` is asked once for each colour that depends on it.
  static PasscodeAppearance defaults(bool isTablet, const std::function<bool()>& isDarkModeEnabled);

  friend bool operator==(const PasscodeAppearance&, const PasscodeAppearance&) = default;

 private:
  void loadGaps(bool isTablet);
  void loadFonts();
  void loadColors(const std::function<bool()>& isDarkModeEnabled);
};

}  // namespace sentrel
