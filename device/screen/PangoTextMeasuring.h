#pragma once

#include <memory>

#include "device/screen/PinnedFonts.h"
#include "sentrel/platform/TextMeasuring.h"

namespace sentrel::screen {

/// Measures text as the painter draws it.
class PangoTextMeasuring final : public TextMeasuring {
 public:
  explicit PangoTextMeasuring(std::shared_ptr<const PinnedFonts> fonts);

  CGSize sizeOfText(std::string_view text, const Font& font, double maxWidth) const override;

 private:
  std::shared_ptr<const PinnedFonts> fonts_;
};

}  // namespace sentrel::screen
