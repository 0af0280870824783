#include "programs/common/Words.h"

#include <sstream>

namespace sentrel::programs {

Words wordsOf(const std::string& line) {
  std::istringstream stream(line);
  Words words;
  for (std::string word; stream >> word;)
    words.push_back(word);
  return words;
}

}  // namespace sentrel::programs
