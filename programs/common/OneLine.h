#pragma once

#include <algorithm>
#include <string>

namespace sentrel::programs {

/// A text from elsewhere, for a line of output: without what would end the line, or do things to a
/// terminal.
inline std::string oneLine(std::string text) {
  std::ranges::replace_if(
      text, [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
  return text;
}

}  // namespace sentrel::programs
