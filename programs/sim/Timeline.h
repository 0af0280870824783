#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "programs/sim/Phone.h"

namespace sentrel::sim {

/// Prints what changes on a phone, with the time since the beginning in front.
class Timeline {
 public:
  /// Looks at the phone after each moment, as long as it lives.
  Timeline(Phone& phone, std::ostream& out);
  ~Timeline();
  Timeline(const Timeline&) = delete;
  Timeline& operator=(const Timeline&) = delete;

  void printCommand(const std::string& text);

  /// Prints what has changed since it last looked.
  void look();

 private:
  struct Prompt {
    std::string face;
    std::string glyph;
    bool operator==(const Prompt&) const = default;
  };

  void lookAtRequests();
  void lookAtNotifications();
  void lookAtLines(const std::vector<std::string>& lines, std::size_t& printed, const char* what);
  void lookAtPrompts();
  void lookAtPasscodeScreen();
  void lookAtFront();
  std::vector<Prompt> prompts();
  void print(const std::string& text);

  Phone& phone_;
  std::ostream& out_;
  WallTime start_;
  Mark printed_;
  std::size_t requests_ = 0;
  std::vector<std::size_t> outcomes_;
  std::vector<Prompt> prompts_;
  std::string front_ = "home";
  std::string passcodeScreen_;
  bool isLocked_ = false;
};

}  // namespace sentrel::sim
