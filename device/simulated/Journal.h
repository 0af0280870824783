#pragma once

#include <string>
#include <utility>
#include <vector>

namespace sentrel::simulated {

/// What was asked of a simulated device, in order, one line an action.
class Journal {
 public:
  void record(std::string line) { lines_.push_back(std::move(line)); }

  const std::vector<std::string>& lines() const noexcept { return lines_; }

  /// The lines so far, which are then forgotten.
  std::vector<std::string> take() { return std::exchange(lines_, {}); }

 private:
  std::vector<std::string> lines_;
};

}  // namespace sentrel::simulated
