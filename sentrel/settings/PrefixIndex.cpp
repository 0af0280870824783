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
  nodes_.resize(1);
  std::vector<Range> pending;
  if (!prefixes_.empty()) pending.push_back({0, prefixes_.size(), 0});
  while (!pending.empty()) {
    const Range range = pending.back();
    pending.pop_back();
    if (range.last - range.first == 1)
      nodes_[range.node] = {.first = static_cast<std::uint32_t>(range.first), .isPrefix = true};
    else
      branch(range, pending);
  }
}

void PrefixIndex::branch(const Range& range, std::vector<Range>& pending) {
  const std::string& lowest = prefixes_[range.first];
  const std::string& highest = prefixes_[range.last - 1];
  // What the two ends have in common, everything between them has as well.
  const auto differing = std::ranges::mismatch(lowest, highest).in1;
  const auto position = static_cast<std::size_t>(differing - lowest.begin());
  const unsigned first = byteAt(lowest, position);
  const unsigned count = byteAt(highest, position) - first + 1;
  const std::size_t firstNode = nodes_.size();
  nodes_[range.node] = {.position = static_cast<std::uint32_t>(position),
                        .first = static_cast<std::uint32_t>(firstNode),
                        .count = static_cast<std::uint16_t>(count),
                        .lowest = static_cast<std::uint8_t>(first)};
  nodes_.resize(firstNode + count);
  for (std::size_t begin = range.first, end = begin; begin < range.last; begin = end) {
    const unsigned byte = byteAt(prefixes_[begin], position);
    while (end < range.last && byteAt(prefixes_[end], position) == byte)
      ++end;
    pending.push_back({begin, end, firstNode + byte - first});
  }
}

bool PrefixIndex::beginsWithAny(std::string_view text) const noexcept {
  if (nodes_.empty()) return false;
  const Node* node = nodes_.data();
  while (node->count > 0) {
    if (node->position >= text.size()) return false;
    const auto byte = static_cast<unsigned char>(asciiLowercased(text[node->position]));
    const unsigned which = unsigned{byte} - node->lowest;
    if (which >= node->count) return false;
    node = &nodes_[node->first + which];
  }
  return node->isPrefix && beginsWithAsciiLowercased(text, prefixes_[node->first]);
}

}  // namespace sentrel
