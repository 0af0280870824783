#include "sentrel/uikit/TextSize.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "sentrel/uikit/UIApplication.h"

namespace sentrel {

CGSize sizeOfText(std::string_view text, const UIFont& font, double maxWidth) {
  const auto& measuring = UIApplication::sharedApplication().platform().textMeasuring;
  return measuring ? measuring->sizeOfText(text, font, maxWidth) : CGSize{};
}

CGSize sizeOfTypedText(std::string_view text, const UIFont& font, double maxWidth) {
  const auto& measuring = UIApplication::sharedApplication().platform().textMeasuring;
  return measuring ? measuring->sizeOfSecretText(text, font, maxWidth) : CGSize{};
}

CGSize contentSize(CGSize size, const UIFont& font, int numberOfLines) {
  constexpr double unlimited = std::numeric_limits<double>::infinity();
  if (numberOfLines > 0)
    size.height = std::min(size.height, numberOfLines * sizeOfText("", font, unlimited).height);
  return {std::ceil(size.width), std::ceil(size.height)};
}

}  // namespace sentrel
