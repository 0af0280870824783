#include "sentrel/uikit/NSRange.h"

#include <algorithm>
#include <limits>

namespace sentrel {
namespace {

/// How much one character takes.
struct Character {
  std::size_t bytes;
  std::size_t units;
};

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The bytes that a sequence beginning with `lead` has; 1 for what begins none.
std::size_t sequenceLength(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 1;
}

/// Whether the second byte excludes overlong forms, surrogates and what lies beyond Unicode.
bool isSecondByteOf(unsigned char lead, unsigned char second) {
  if (lead == 0xE0) return second >= 0xA0;
  if (lead == 0xED) return second <= 0x9F;
  if (lead == 0xF0) return second >= 0x90;
  if (lead == 0xF4) return second <= 0x8F;
  return true;
}

/// The first character of `text`, which is not empty.
Character firstCharacter(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = sequenceLength(lead);
  if (length == 1 || length > text.size()) return {1, 1};
  const std::string_view rest = text.substr(1, length - 1);
  if (!std::ranges::all_of(rest, isContinuation)) return {1, 1};
  if (!isSecondByteOf(lead, static_cast<unsigned char>(rest.front()))) return {1, 1};
  return {length, length == 4 ? std::size_t{2} : std::size_t{1}};
}

/// The ends of a range, in code units and in bytes.
struct Ends {
  Character start{0, 0};
  Character end{0, 0};
};

/// Moves the start down and the end up to where characters begin.
Ends endsInside(std::string_view text, NSRange range) {
  const std::size_t room = std::numeric_limits<std::size_t>::max() - range.location;
  const std::size_t wanted = range.location + std::min(range.length, room);
  Ends ends;
  Character position{0, 0};
  const auto canGoOn = [&](std::size_t limit) {
    return position.bytes < text.size() && position.units < limit;
  };
  while (canGoOn(range.location)) {
    const Character next = firstCharacter(text.substr(position.bytes));
    if (position.units + next.units > range.location) break;
    position = {position.bytes + next.bytes, position.units + next.units};
  }
  ends.start = ends.end = position;
  if (range.length == 0) return ends;
  while (canGoOn(wanted)) {
    const Character next = firstCharacter(text.substr(position.bytes));
    position = {position.bytes + next.bytes, position.units + next.units};
  }
  ends.end = position;
  return ends;
}

}  // namespace

std::size_t utf16Length(std::string_view text) noexcept {
  std::size_t units = 0;
  while (!text.empty()) {
    const Character next = firstCharacter(text);
    units += next.units;
    text.remove_prefix(next.bytes);
  }
  return units;
}

std::size_t characterCount(std::string_view text) noexcept {
  std::size_t count = 0;
  for (; !text.empty(); ++count)
    text.remove_prefix(firstCharacter(text).bytes);
  return count;
}

NSRange rangeInsideText(std::string_view text, NSRange range) noexcept {
  const Ends ends = endsInside(text, range);
  return {ends.start.units, ends.end.units - ends.start.units};
}

std::string stringByReplacingCharactersInRange(std::string_view text, NSRange range,
                                               std::string_view replacement) {
  const Ends ends = endsInside(text, range);
  std::string result(text.substr(0, ends.start.bytes));
  result += replacement;
  result += text.substr(ends.end.bytes);
  return result;
}

}  // namespace sentrel
