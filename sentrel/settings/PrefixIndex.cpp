#include "sentrel/settings/PrefixIndex.h"

#include <algorithm>
#include <utility>

#include "sentrel/settings/AsciiCase.h"

namespace sentrel {
namespace {

/// Orders a text of any case before the prefixes that are greater than its lower-case form.
bool isBefore(std::string_view text, std::string_view prefix) noexcept {
  const std::size_t common = std::min(text.size(), prefix.size());
  for (std::size_t i = 0; i < common; ++i) {
    const auto c = static_cast<unsigned char>(asciiLowercased(text[i]));
    const auto p = static_cast<unsigned char>(prefix[i]);
    if (c != p) return c < p;
  }
  return text.size() < prefix.size();
}

bool beginsWith(std::string_view text, std::string_view prefix) noexcept {
  return text.size() >= prefix.size() &&
         std::ranges::equal(text.substr(0, prefix.size()), prefix, {}, asciiLowercased);
}

}  // namespace

PrefixIndex::PrefixIndex(std::vector<std::string> prefixes) : prefixes_(std::move(prefixes)) {
  std::ranges::sort(prefixes_);
  const auto decidedBy = [](const std::string& shorter, const std::string& longer) {
    return longer.starts_with(shorter);
  };
  prefixes_.erase(std::unique(prefixes_.begin(), prefixes_.end(), decidedBy), prefixes_.end());
}

bool PrefixIndex::beginsWithAny(std::string_view text) const noexcept {
  const auto next = std::upper_bound(prefixes_.begin(), prefixes_.end(), text, isBefore);
  return next != prefixes_.begin() && beginsWith(text, *std::prev(next));
}

}  // namespace sentrel
