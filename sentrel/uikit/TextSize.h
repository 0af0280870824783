#pragma once

#include <string_view>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"
#include "sentrel/uikit/UIFont.h"

namespace sentrel {

/// What the current process's text measuring says, unrounded; zero where it has none.
SENTREL_API CGSize sizeOfText(std::string_view text, const UIFont& font, double maxWidth);

/// The same in whole points, for at most `numberOfLines` lines; 0 for any number.
CGSize contentSizeOfText(std::string_view text, const UIFont& font, double maxWidth,
                         int numberOfLines);

}  // namespace sentrel
