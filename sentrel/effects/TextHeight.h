#pragma once

#include <optional>
#include <string_view>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"
#include "sentrel/uikit/UIFont.h"

namespace sentrel {

/// The size, in points and unrounded, of the rectangle that `text` fills in lines of at most
/// `width`, and a point more of height, so that nothing is cut off. Nothing for no text.
SENTREL_API CGSize findHeightForText(const std::optional<std::string_view>& text, double width,
                                     const UIFont& font);

}  // namespace sentrel
