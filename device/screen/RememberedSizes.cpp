#include "device/screen/RememberedSizes.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace sentrel::screen {

std::optional<CGSize> RememberedSizes::find(std::string_view text, const Font& font,
                                            double maxWidth) {
  if (const Measurement* found = findIn(recent_, text, font, maxWidth)) return found->size;
  const Measurement* found = findIn(older_, text, font, maxWidth);
  if (!found) return std::nullopt;
  const Measurement kept = *found;
  remember(text, kept);
  return kept.size;
}

void RememberedSizes::add(std::string_view text, const Font& font, double maxWidth, CGSize size,
                          int lineCount) {
  if (text.size() > longestText) return;
  const double narrowest = std::min(size.width, maxWidth);
  const double widest = lineCount == 1 ? std::numeric_limits<double>::infinity() : maxWidth;
  remember(text, {font, narrowest, widest, size});
}

const RememberedSizes::Measurement* RememberedSizes::findIn(const Texts& texts,
                                                            std::string_view text, const Font& font,
                                                            double maxWidth) {
  const auto measurements = texts.find(text);
  if (measurements == texts.end()) return nullptr;
  const auto found = std::ranges::find_if(measurements->second, [&](const Measurement& each) {
    return each.narrowest <= maxWidth && maxWidth <= each.widest && each.font == font;
  });
  return found == measurements->second.end() ? nullptr : &*found;
}

void RememberedSizes::remember(std::string_view text, const Measurement& measurement) {
  if (recentCount_ == mostAtATime) {
    older_ = std::exchange(recent_, {});
    recentCount_ = 0;
  }
  auto place = recent_.find(text);
  if (place == recent_.end()) place = recent_.try_emplace(std::string(text)).first;
  place->second.push_back(measurement);
  ++recentCount_;
}

}  // namespace sentrel::screen
