#include "sentrel/settings/PrefixIndex.h"

#include <algorithm>
#include <utility>

#include "sentrel/settings/AsciiCase.h"

namespace sentrel {
namespace {

unsigned byteAt(std::string_view text, std::size_t position) noexcept {
  return static_cast<unsigned char>(text[position]);
}

}  // namespace

PrefixIndex::PrefixIndex(std::vector<std::string> prefixes) : prefixes_(std::move(prefixes)) {
  keepDecidingPrefixes();
  buildTree();
}

/// In sorted order a prefix stands right before everything that begins with it.
void PrefixIndex::keepDecidingPrefixes() {
  std::ranges::sort(prefixes_);
  std::vector<std::string> deciding;
  for (std::string& prefix : prefixes_)
    if (deciding.empty() || !prefix.starts_with(deciding.back()))
      deciding.push_back(std::move(prefix));
  prefixes_ = std::move(deciding);
}

/// By a list of what is left to do and not by recursion: how deep the tree is, the input decides.
void PrefixIndex::buildTree() {
  links_.push_back(0);
  std::vector<Range> pending;
  if (!prefixes_.empty()) pending.push_back({0, prefixes_.size(), 0});
  while (!pending.empty()) {
    const Range range = pending.back();
    pending.pop_back();
    if (range.last - range.first == 1)
      links_[range.link] = -static_cast<Link>(range.last);
    else
      addNode(range, pending);
  }
}

void PrefixIndex::addNode(const Range& range, std::vector<Range>& pending) {
  const std::string& lowest = prefixes_[range.first];
  const std::string& highest = prefixes_[range.last - 1];
  // What the two ends have in common, everything between them has as well.
  const auto differing = std::ranges::mismatch(lowest, highest).in1;
  const auto position = static_cast<std::size_t>(differing - lowest.begin());
  const unsigned first = byteAt(lowest, position);
  const Node node{position, links_.size(), byteAt(highest, position) - first + 1, first};
  links_.resize(links_.size() + node.linkCount, 0);
  nodes_.push_back(node);
  links_[range.link] = static_cast<Link>(nodes_.size());
  for (std::size_t begin = range.first, end = begin; begin < range.last; begin = end) {
    const unsigned byte = byteAt(prefixes_[begin], position);
    while (end < range.last && byteAt(prefixes_[end], position) == byte)
      ++end;
    pending.push_back({begin, end, node.firstLink + byte - first});
  }
}

bool PrefixIndex::beginsWithAny(std::string_view text) const noexcept {
  Link link = links_.empty() ? 0 : links_.front();
  while (link > 0) {
    const Node& node = nodes_[static_cast<std::size_t>(link - 1)];
    if (node.position >= text.size()) return false;
    const auto byte = static_cast<unsigned char>(asciiLowercased(text[node.position]));
    const unsigned which = byte - node.lowest;
    link = which < node.linkCount ? links_[node.firstLink + which] : 0;
  }
  return link < 0 && beginsWithAsciiLowercased(text, prefixes_[static_cast<std::size_t>(~link)]);
}

}  // namespace sentrel
