#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "device/screen/Handles.h"
#include "device/screen/PinnedFonts.h"
#include "sentrel/platform/Geometry.h"

namespace sentrel::screen {

/// `text` as it is drawn: every byte that belongs to no character becomes U+FFFD, and what is
/// beyond `longestDrawnText` bytes is left out, for no screen shows it. Words longer than any
/// language's may be broken everywhere.
std::string drawableText(std::string_view text);

inline constexpr std::size_t longestDrawnText = std::size_t{256} * 1024;

/// One text in one font, broken into lines.
class TextLayout {
 public:
  struct Limits {
    /// Points; infinite for lines of any length.
    double width = std::numeric_limits<double>::infinity();
    /// Whole lines that fit, at least one; infinite for all.
    double height = std::numeric_limits<double>::infinity();
    /// Whether what does not fit ends in an ellipsis, be it cut inside a line or between two.
    bool ellipsis = false;
    /// Whether a word that is longer than a line may be broken.
    bool breaksWords = true;
    PangoAlignment alignment = PANGO_ALIGN_LEFT;
  };

  TextLayout(const PinnedFonts& fonts, std::string_view text, const Font& font,
             const Limits& limits);

  /// Points: the longest line's width, and the height of all lines.
  CGSize size() const;
  int lineCount() const { return pango_layout_get_line_count(layout_.get()); }
  /// What the first `count` lines show, of at least as many. Good as long as the layout.
  std::string_view textOfLines(int count) const;
  /// The width to hand out alignment within; infinite where there was no limit.
  const Limits& limits() const noexcept { return limits_; }
  PangoLayout* pango() const noexcept { return layout_.get(); }

 private:
  void setText(const std::string& text);
  void endInEllipsis();

  Limits limits_;
  PangoLayoutHandle layout_;
};

inline constexpr const char* ellipsis = "\u2026";

/// The height of one line of `font`, in points.
double lineHeight(const PinnedFonts& fonts, const Font& font);

}  // namespace sentrel::screen
