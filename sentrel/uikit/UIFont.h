#pragma once

#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Font.h"

namespace sentrel {

enum class UIFontTextStyle { largeTitle, title1, subheadline, footnote };

struct SENTREL_API UIFont : Font {
  static UIFont systemFontOfSize(double size);
  static UIFont boldSystemFontOfSize(double size);
  static UIFont italicSystemFontOfSize(double size);
  static UIFont fontWithName(std::string name, double size);

  /// The system face at the size that the style has while the user has not chosen another.
  static UIFont preferredFontForTextStyle(UIFontTextStyle style);

  /// "system bold 17", "AvenirNext-Regular 33".
  std::string description() const;

  friend bool operator==(const UIFont&, const UIFont&) = default;
};

}  // namespace sentrel
