#include "sentrel/settings/ProtectedItems.h"

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
  std::memcpy(&word, bytes, length);
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

/// Items are too short for a call to pay.
bool isSameText(std::string_view a, std::string_view b) noexcept {
  if (a.size() != b.size()) return false;
  if (a.size() < wordSize) return a == b;
  for (std::size_t i = 0; i + wordSize < a.size(); i += wordSize)
    if (wordAt(a.data() + i) != wordAt(b.data() + i)) return false;
  return wordAt(a.data() + a.size() - wordSize) == wordAt(b.data() + b.size() - wordSize);
}

}  // namespace

ProtectedItems::ProtectedItems(const PropertyList* array) {
  const auto* elements = array ? array->as<PropertyList::Array>() : nullptr;
  if (!elements) return;
  for (const PropertyList& element : *elements) {
    if (const auto* text = element.as<std::string>())
      add(*text);
    else
      others_.push_back(element);
  }
}

bool ProtectedItems::contains(std::string_view item) const noexcept {
  if (table_.empty()) return false;
  const std::size_t mask = table_.size() - 1;
  const std::uint32_t hash = hashOf(item);
  for (std::size_t i = hash & mask; table_[i].number != 0; i = (i + 1) & mask)
    if (table_[i].hash == hash && isSameText(members_[table_[i].number - 1], item)) return true;
  return false;
}

void ProtectedItems::add(std::string_view item) {
  if (contains(item)) return;
  members_.emplace_back(item);
  if (members_.size() * 2 > table_.size())
    rebuildTable();
  else
    enter(members_.size() - 1);
}

void ProtectedItems::remove(std::string_view item) {
  const auto member = std::ranges::find(members_, item);
  if (member == members_.end()) return;
  members_.erase(member);
  rebuildTable();
}

void ProtectedItems::enter(std::size_t index) {
  const std::size_t mask = table_.size() - 1;
  const std::uint32_t hash = hashOf(members_[index]);
  std::size_t i = hash & mask;
  while (table_[i].number != 0)
    i = (i + 1) & mask;
  table_[i] = {hash, static_cast<std::uint32_t>(index + 1)};
}

void ProtectedItems::rebuildTable() {
  table_.assign(std::max(smallestTable, std::bit_ceil(members_.size() * 2)), Place{0, 0});
  for (std::size_t i = 0; i < members_.size(); ++i)
    enter(i);
}

PropertyList::Array ProtectedItems::asArray() const {
  PropertyList::Array elements(members_.begin(), members_.end());
  elements.insert(elements.end(), others_.begin(), others_.end());
  return elements;
}

}  // namespace sentrel
