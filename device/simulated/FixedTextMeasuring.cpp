#include "device/simulated/FixedTextMeasuring.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sentrel::simulated {
namespace {

constexpr double lineHeight = 1.2;

/// Characters are counted by the bytes that begin one.
std::size_t characters(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

/// Breaks text into lines of at most so many characters.
class Lines {
 public:
  explicit Lines(std::size_t longest) : longest_(longest) {}

  void addParagraph(std::string_view paragraph) {
    ++count_;
    line_ = 0;
    while (true) {
      const std::size_t space = paragraph.find(' ');
      addWord(characters(paragraph.substr(0, space)));
      if (space == std::string_view::npos) return;
      paragraph.remove_prefix(space + 1);
    }
  }

  std::size_t count() const { return count_; }
  std::size_t widest() const { return widest_; }

 private:
  void addWord(std::size_t length) {
    if (line_ > 0 && line_ + 1 + length > longest_) {
      ++count_;
      line_ = 0;
    }
    line_ += (line_ > 0 ? 1 : 0) + length;
    for (; line_ > longest_; line_ -= longest_) {
      ++count_;
      widest_ = std::max(widest_, longest_);
    }
    widest_ = std::max(widest_, line_);
  }

  std::size_t longest_;
  std::size_t count_ = 0;
  std::size_t line_ = 0;
  std::size_t widest_ = 0;
};

}  // namespace

CGSize FixedTextMeasuring::sizeOfText(std::string_view text, const Font& font,
                                      double maxWidth) const {
  const double advance = font.size * (font.bold ? 0.55 : 0.5);
  const double fitting = std::floor(maxWidth / advance);
  // At least one character a line, however narrow; a million is as good as no limit.
  Lines lines(static_cast<std::size_t>(std::isnan(fitting) ? 1 : std::clamp(fitting, 1.0, 1e6)));
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    lines.addParagraph(text.substr(start, end - start));
    start = end + 1;
  }
  return {static_cast<double>(lines.widest()) * advance,
          static_cast<double>(lines.count()) * font.size * lineHeight};
}

}  // namespace sentrel::simulated
