#include "sentrel/settings/AsciiCase.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace sentrel {
namespace {

// Eight bytes at a time: each protection question about a system service comes by here.
using Word = std::uint64_t;

constexpr Word each(unsigned char byte) {
  return byte * 0x0101010101010101U;
}

Word wordAt(const char* bytes) noexcept {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

/// asciiLowercased() of each byte. The sums carry the answer to two comparisons in their top bits.
Word lowercased(Word word) noexcept {
  const Word low = word & each(0x7f);
  const Word fromA = low + each(0x80 - 'A');
  const Word beyondZ = low + each(0x7f - 'Z');
  const Word upper = fromA & ~beyondZ & ~word & each(0x80);
  return word | upper >> 2;
}

}  // namespace

bool isAscii(std::string_view text) noexcept {
  Word seen = 0;
  std::size_t i = 0;
  for (; i + sizeof(Word) <= text.size(); i += sizeof(Word))
    seen |= wordAt(text.data() + i);
  for (; i < text.size(); ++i)
    seen |= static_cast<unsigned char>(text[i]);
  return (seen & each(0x80)) == 0;
}

bool beginsWithAsciiLowercased(std::string_view text, std::string_view prefix) noexcept {
  if (text.size() < prefix.size()) return false;
  std::size_t i = 0;
  for (; i + sizeof(Word) <= prefix.size(); i += sizeof(Word))
    if (lowercased(wordAt(text.data() + i)) != wordAt(prefix.data() + i)) return false;
  return std::ranges::equal(text.substr(i, prefix.size() - i), prefix.substr(i), {},
                            asciiLowercased);
}

}  // namespace sentrel
