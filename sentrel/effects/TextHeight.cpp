#include "sentrel/effects/TextHeight.h"

#include "sentrel/uikit/TextSize.h"

namespace sentrel {

CGSize findHeightForText(const std::optional<std::string_view>& text, double width,
                         const UIFont& font) {
  if (!text) return {};
  const CGSize size = sizeOfText(*text, font, width);
  return {size.width, size.height + 1};
}

}  // namespace sentrel
