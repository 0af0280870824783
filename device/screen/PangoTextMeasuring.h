#pragma once

#include <memory>

#include "device/screen/PinnedFonts.h"
#include "device/screen/RememberedSizes.h"
#include "sentrel/platform/TextMeasuring.h"

namespace sentrel::screen {

/// Measures text as the painter draws it, and remembers the sizes that it told lately.
class PangoTextMeasuring final : public TextMeasuring {
 public:
  explicit PangoTextMeasuring(std::shared_ptr<const PinnedFonts> fonts);

  CGSize sizeOfText(std::string_view text, const Font& font, double maxWidth) const override;
  CGSize sizeOfSecretText(std::string_view text, const Font& font, double maxWidth) const override;

 private:
  std::shared_ptr<const PinnedFonts> fonts_;
  mutable RememberedSizes remembered_;
};

}  // namespace sentrel::screen
