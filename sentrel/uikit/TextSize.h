#pragma once

#include <string_view>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"
#include "sentrel/uikit/UIFont.h"

namespace sentrel {

/// What the current process's text measuring says, unrounded; zero where it has none.
SENTREL_API CGSize sizeOfText(std::string_view text, const UIFont& font, double maxWidth);

/// The same for what a user typed, of which nothing is kept.
CGSize sizeOfTypedText(std::string_view text, const UIFont& font, double maxWidth);

/// `size` of a text in whole points, for at most `numberOfLines` lines of `font`; 0 for any number.
CGSize contentSize(CGSize size, const UIFont& font, int numberOfLines);

}  // namespace sentrel
