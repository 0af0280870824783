#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "sentrel/platform/Font.h"
#include "sentrel/platform/Geometry.h"

namespace sentrel::screen {

/// What was measured lately: a screen's texts are measured at every layout, and most return from
/// screen to screen. Long texts are not remembered, and at most twice `mostAtATime` measurements
/// are: those that have not been asked for while as many others were go first.
class RememberedSizes {
 public:
  static constexpr std::size_t longestText = 1024;
  static constexpr std::size_t mostAtATime = 256;

  std::optional<CGSize> find(std::string_view text, const Font& font, double maxWidth);
  void add(std::string_view text, const Font& font, double maxWidth, CGSize size, int lineCount);

 private:
  /// A text in lines of at most `widest` breaks alike in every width down to its longest line's.
  struct Measurement {
    Font font;
    double narrowest;
    double widest;
    CGSize size;
  };

  struct HashOfText : std::hash<std::string_view> {
    using is_transparent = void;
  };
  using Texts =
      std::unordered_map<std::string, std::vector<Measurement>, HashOfText, std::equal_to<>>;

  static const Measurement* findIn(const Texts& texts, std::string_view text, const Font& font,
                                   double maxWidth);
  void remember(std::string_view text, const Measurement& measurement);

  Texts recent_;
  Texts older_;
  std::size_t recentCount_ = 0;
};

}  // namespace sentrel::screen
