#include "sentrel/settings/ProtectedItems.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace sentrel {
namespace {

constexpr std::size_t smallestTable = 8;

std::uint64_t wordAt(const char* bytes, std::size_t length) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, length);
  return word;
}

/// Multiplies and folds, eight bytes at a time; the last eight may overlap those before them.
std::uint32_t hashOf(std::string_view text) noexcept {
  constexpr std::uint64_t odd = 0x9e3779b97f4a7c15;
  std::uint64_t hash = text.size() * odd;
  const auto mix = [&hash](std::uint64_t word) {
    hash = (hash ^ word) * odd;
    hash ^= hash >> 32;
  };
  std::size_t left = text.size();
  for (; left > 8; left -= 8)
    mix(wordAt(text.data() + text.size() - left, 8));
  if (text.size() >= 8)
    mix(wordAt(text.data() + text.size() - 8, 8));
  else
    mix(wordAt(text.data(), text.size()));
  return static_cast<std::uint32_t>(hash);
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
    if (table_[i].hash == hash && members_[table_[i].number - 1] == item) return true;
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
