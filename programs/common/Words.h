#pragma once

#include <string>
#include <vector>

namespace sentrel::programs {

using Words = std::vector<std::string>;

/// The words of a line, parted by spaces and tabs.
Words wordsOf(const std::string& line);

}  // namespace sentrel::programs
