#include "programs/common/Words.h"

#include <sstream>

namespace sentrel::programs {

std::vector<std::string> wordsOf(const std::string& line) {
  std::istringstream stream(line);
  std::vector<std::string> words;
  for (std::string word; stream >> word;)
    words.push_back(word);
  return words;
}

}  // namespace sentrel::programs
