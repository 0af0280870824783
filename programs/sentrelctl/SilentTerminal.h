#pragma once

#include <signal.h>
#include <termios.h>

#include <array>

namespace sentrel::sentrelctl {

/// Prompts for something secret, and keeps the terminal from showing what is typed as long as it
/// lives; a signal that ends the program meanwhile ends this too. Does nothing where standard input
/// is no terminal. One at a time.
class SilentTerminal {
 public:
  explicit SilentTerminal(const char* prompt);
  ~SilentTerminal();
  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;

 private:
  static constexpr std::array endingSignals{SIGHUP, SIGINT, SIGQUIT, SIGTERM};

  std::array<struct sigaction, endingSignals.size()> before_{};
  bool isTerminal_;
};

}  // namespace sentrel::sentrelctl
