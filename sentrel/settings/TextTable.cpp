#include "sentrel/settings/TextTable.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace sentrel {
namespace {

constexpr std::size_t smallestTable = 8;

// Words of a text longer than one: the last may overlap those before it.
using Word = std::uint64_t;
constexpr std::size_t wordSize = sizeof(Word);

Word wordAt(const char* bytes, std::size_t length = wordSize) noexcept {
  Word word = 0;
  if (length > 0) std::memcpy(&word, bytes, length);
  return word;
}

/// Two words at a time, each multiplied into a sum of its own, so that no multiplication waits for
/// the one before.
std::uint32_t hashOf(std::string_view text) noexcept {
  constexpr Word odd = 0x9e3779b97f4a7c15;
  constexpr Word otherOdd = 0xbf58476d1ce4e5b9;
  Word even = text.size();
  Word uneven = 0;
  const auto mix = [&](Word first, Word second) {
    even = (even ^ first) * odd;
    uneven = (uneven ^ second) * otherOdd;
  };
  const char* at = text.data();
  const char* const end = at + text.size();
  for (; end - at > std::ptrdiff_t(2 * wordSize); at += 2 * wordSize)
    mix(wordAt(at), wordAt(at + wordSize));
  if (text.size() >= 2 * wordSize)
    mix(wordAt(end - 2 * wordSize), wordAt(end - wordSize));
  else if (text.size() >= wordSize)
    mix(wordAt(at), wordAt(end - wordSize));
  else
    mix(wordAt(at, text.size()), 0);
  Word hash = even + std::rotl(uneven, 32);
  hash ^= hash >> 32;
  return static_cast<std::uint32_t>((hash * odd) >> 32);
}

/// The texts are too short for a call to pay.
bool isSameText(std::string_view a, std::string_view b) noexcept {
  if (a.size() != b.size()) return false;
  if (a.size() < wordSize) return a == b;
  for (std::size_t i = 0; i + wordSize < a.size(); i += wordSize)
    if (wordAt(a.data() + i) != wordAt(b.data() + i)) return false;
  return wordAt(a.data() + a.size() - wordSize) == wordAt(b.data() + b.size() - wordSize);
}

}  // namespace

std::optional<std::size_t> TextTable::find(std::string_view text) const noexcept {
  if (places_.empty()) return std::nullopt;
  const std::size_t mask = places_.size() - 1;
  const std::uint32_t hash = hashOf(text);
  for (std::size_t i = hash & mask; places_[i].number != 0; i = (i + 1) & mask)
    if (places_[i].hash == hash && isSameText(texts_[places_[i].number - 1], text))
      return places_[i].number - 1;
  return std::nullopt;
}

bool TextTable::add(std::string_view text) {
  if (find(text)) return false;
  texts_.emplace_back(text);
  if (texts_.size() * 2 > places_.size())
    rebuildPlaces();
  else
    enter(texts_.size() - 1);
  return true;
}

void TextTable::remove(std::string_view text) {
  const auto index = find(text);
  if (!index) return;
  texts_.erase(texts_.begin() + static_cast<std::ptrdiff_t>(*index));
  rebuildPlaces();
}

void TextTable::enter(std::size_t index) {
  const std::size_t mask = places_.size() - 1;
  const std::uint32_t hash = hashOf(texts_[index]);
  std::size_t i = hash & mask;
  while (places_[i].number != 0)
    i = (i + 1) & mask;
  places_[i] = {hash, static_cast<std::uint32_t>(index + 1)};
}

void TextTable::rebuildPlaces() {
  places_.assign(std::max(smallestTable, std::bit_ceil(texts_.size() * 2)), Place{0, 0});
  for (std::size_t i = 0; i < texts_.size(); ++i)
    enter(i);
}

}  // namespace sentrel
