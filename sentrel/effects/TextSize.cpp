#include "sentrel/effects/TextSize.h"

#include "sentrel/Process.h"

namespace sentrel {

CGSize boundingSizeOfText(const std::optional<std::string_view>& text, double width,
                          const UIFont& font) {
  const auto& measuring = Process::current().platform().textMeasuring;
  return text && measuring ? measuring->sizeOfText(*text, font, width) : CGSize{};
}

CGSize findHeightForText(const std::optional<std::string_view>& text, double width,
                         const UIFont& font) {
  if (!text) return {};
  const CGSize size = boundingSizeOfText(text, width, font);
  return {size.width, size.height + 1};
}

}  // namespace sentrel
