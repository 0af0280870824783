#pragma once

#include "sentrel/platform/TextMeasuring.h"

namespace sentrel::simulated {

/// Measures text in a face of which every character is half as wide as the font's size (0.55 where
/// it is bold) and every line 1.2 times as high.
class FixedTextMeasuring final : public TextMeasuring {
 public:
  CGSize sizeOfText(std::string_view text, const Font& font, double maxWidth) const override;
};

}  // namespace sentrel::simulated
