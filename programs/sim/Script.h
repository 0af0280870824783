#pragma once

#include <functional>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "programs/sim/Phone.h"

namespace sentrel::sim {

/// One line of a script, checked and ready to run. `run` returns what was wrong, in words, where an
/// expectation was not met.
struct Step {
  int line;
  std::string text;
  std::function<std::optional<std::string>(Phone& phone)> run;
};

/// None for a line without words. Throws UsageError for one that makes no sense.
std::optional<Step> prepareStep(Phone& phone, int line, const std::string& text);

/// Every step of a script, and what is wrong with each line that makes no sense.
struct Script {
  struct Complaint {
    int line;
    std::string text;
  };

  std::vector<Step> steps;
  std::vector<Complaint> complaints;
};

Script readScript(Phone& phone, std::istream& input);

/// Every command and expectation, a line each.
std::string languageHelp();

}  // namespace sentrel::sim
