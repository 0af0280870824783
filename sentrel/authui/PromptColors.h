#pragma once

#include "sentrel/uikit/UIColor.h"

namespace sentrel {

/// What the parts of a prompt are coloured with in one appearance. Which appearance it is may have
/// to be asked of the home screen: whatever is coloured together asks once.
struct PromptColors {
  UIColor title;
  UIColor message;
  UIColor glyph;
  UIColor digits;

  static PromptColors of(bool isDarkModeEnabled) {
    if (isDarkModeEnabled)
      return {UIColor::labelColor(), UIColor::secondaryLabelColor(), UIColor::secondaryLabelColor(),
              UIColor::labelColor()};
    return {UIColor::darkGrayColor(), UIColor::darkGrayColor(), UIColor::grayColor(),
            UIColor::colorWithWhite(0.31, 1)};
  }
};

}  // namespace sentrel
