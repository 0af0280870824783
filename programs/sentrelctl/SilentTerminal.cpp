#include "programs/sentrelctl/SilentTerminal.h"

#include <unistd.h>

#include <cstddef>
#include <cstdio>

namespace sentrel::sentrelctl {
namespace {

/// How the terminal was; here, because a signal handler is handed nothing.
termios shown{};

void showAgain() {
  tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
}

/// The signal finds its default action in place again, and so ends the program.
void showAgainAndEnd(int signal) {
  showAgain();
  raise(signal);
}

}  // namespace

SilentTerminal::SilentTerminal(const char* prompt)
    : isTerminal_(isatty(STDIN_FILENO) && tcgetattr(STDIN_FILENO, &shown) == 0) {
  if (!isTerminal_) return;
  struct sigaction action {};
  action.sa_handler = showAgainAndEnd;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (std::size_t i = 0; i < endingSignals.size(); ++i)
    sigaction(endingSignals[i], &action, &before_[i]);
  termios hidden = shown;
  hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
  std::fputs(prompt, stderr);
}

SilentTerminal::~SilentTerminal() {
  if (!isTerminal_) return;
  showAgain();
  for (std::size_t i = 0; i < endingSignals.size(); ++i)
    sigaction(endingSignals[i], &before_[i], nullptr);
  std::fputs("\n", stderr);
}

}  // namespace sentrel::sentrelctl
