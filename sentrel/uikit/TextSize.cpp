#include "sentrel/uikit/TextSize.h"

#include <algorithm>
#include <cmath>

#include "sentrel/Process.h"

namespace sentrel {

CGSize sizeOfText(std::string_view text, const UIFont& font, double maxWidth) {
  const auto& measuring = Process::current().platform().textMeasuring;
  return measuring ? measuring->sizeOfText(text, font, maxWidth) : CGSize{};
}

CGSize contentSizeOfText(std::string_view text, const UIFont& font, double maxWidth,
                         int numberOfLines) {
  CGSize size = sizeOfText(text, font, maxWidth);
  if (numberOfLines > 0)
    size.height = std::min(size.height, numberOfLines * sizeOfText("", font, maxWidth).height);
  return {std::ceil(size.width), std::ceil(size.height)};
}

}  // namespace sentrel
