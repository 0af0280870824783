#pragma once

#include <string>
#include <vector>

namespace sentrel::programs {

/// The words of a line, parted by spaces and tabs.
std::vector<std::string> wordsOf(const std::string& line);

}  // namespace sentrel::programs
