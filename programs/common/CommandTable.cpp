#include "programs/common/CommandTable.h"

namespace sentrel::programs {

std::string helpFor(const std::string& call, std::string_view help, std::size_t column) {
  std::string text = "  " + call;
  text.resize(std::max(text.size() + 1, column), ' ');
  for (const char c : help)
    text += c == '\n' ? "\n" + std::string(column, ' ') : std::string(1, c);
  return text + "\n";
}

}  // namespace sentrel::programs
