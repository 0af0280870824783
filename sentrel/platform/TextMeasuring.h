#pragma once

#include <string_view>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Font.h"
#include "sentrel/platform/Geometry.h"

namespace sentrel {

/// How much room text takes on this device.
class SENTREL_API TextMeasuring {
 public:
  virtual ~TextMeasuring() = default;

  /// The size, in points and unrounded, of the rectangle that `text` fills in lines of at most
  /// `maxWidth`, which may be infinite: the longest line's width, and the height of all lines.
  /// Lines break between words, and inside a word that is longer than a line. No text fills one
  /// line of width 0. Text that is no UTF-8 is measured as the device would draw it. The device may
  /// keep the text, to be quicker the next time. Main thread only.
  virtual CGSize sizeOfText(std::string_view text, const Font& font, double maxWidth) const = 0;

  /// The same for text that no copy may be kept of; a device that keeps texts overrides it.
  virtual CGSize sizeOfSecretText(std::string_view text, const Font& font, double maxWidth) const {
    return sizeOfText(text, font, maxWidth);
  }
};

}  // namespace sentrel
