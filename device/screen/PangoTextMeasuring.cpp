#include "device/screen/PangoTextMeasuring.h"

#include <utility>

#include "device/screen/TextLayout.h"

namespace sentrel::screen {

PangoTextMeasuring::PangoTextMeasuring(std::shared_ptr<const PinnedFonts> fonts)
    : fonts_(std::move(fonts)) {}

CGSize PangoTextMeasuring::sizeOfText(std::string_view text, const Font& font,
                                      double maxWidth) const {
  if (const auto size = remembered_.find(text, font, maxWidth)) return *size;
  const TextLayout layout(*fonts_, text, font, {.width = maxWidth});
  remembered_.add(text, font, maxWidth, layout.size(), layout.lineCount());
  return layout.size();
}

CGSize PangoTextMeasuring::sizeOfSecretText(std::string_view text, const Font& font,
                                            double maxWidth) const {
  return TextLayout(*fonts_, text, font, {.width = maxWidth}).size();
}

}  // namespace sentrel::screen
