#include "sentrel/passcode/PasscodeAppearance.h"

namespace sentrel {
namespace {

constexpr const char* fontName = "AvenirNext-Regular";

/// Some of the figures have always been of single precision.
constexpr double widened(float value) {
  return value;
}

}  // namespace

PasscodeAppearance PasscodeAppearance::defaults(bool isTablet,
                                                const std::function<bool()>& isDarkModeEnabled) {
  PasscodeAppearance appearance;
  appearance.loadGaps(isTablet);
  appearance.loadFonts();
  appearance.loadColors(isDarkModeEnabled);
  return appearance;
}

void PasscodeAppearance::loadGaps(bool isTablet) {
  fontSizeModifier = isTablet ? 1.5 : 1;
  horizontalGap = 40 * fontSizeModifier;
  verticalGap = isTablet ? 60 : 25;
  modifierForBottomVerticalGap = isTablet ? widened(2.6F) : 3;
  failedAttemptLabelGap = modifierForBottomVerticalGap * verticalGap - 2;
  passcodeOverlayHeight = isTablet ? 96 : 40;
}

void PasscodeAppearance::loadFonts() {
  labelFont = UIFont::fontWithName(fontName, labelFontSize * fontSizeModifier);
  passcodeFont = UIFont::fontWithName(fontName, passcodeFontSize * fontSizeModifier);
}

void PasscodeAppearance::loadColors(const std::function<bool()>& isDarkModeEnabled) {
  const auto byMode = [&](const UIColor& light, const UIColor& dark) {
    return isDarkModeEnabled() ? dark : light;
  };
  const UIColor paper = UIColor::colorWithRed(widened(0.97F), widened(0.97F), 1, 1);
  const UIColor ink = UIColor::colorWithWhite(widened(0.31F), 1);
  backgroundColor = byMode(paper, UIColor::systemBackgroundColor());
  coverViewBackgroundColor = byMode(paper, UIColor::systemBackgroundColor());
  failedAttemptLabelBackgroundColor =
      UIColor::colorWithRed(widened(0.8F), widened(0.1F), widened(0.2F), 1);
  labelTextColor = byMode(ink, UIColor::labelColor());
  passcodeTextColor = byMode(ink, UIColor::labelColor());
  failedAttemptLabelTextColor = byMode(UIColor::whiteColor(), UIColor::systemBackgroundColor());
}

}  // namespace sentrel
