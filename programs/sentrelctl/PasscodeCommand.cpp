#include <unistd.h>

#include <cstdio>
#include <string>

#include "programs/common/CommandLine.h"
#include "programs/common/SettingsValue.h"
#include "programs/sentrelctl/Command.h"
#include "programs/sentrelctl/SettingsFile.h"
#include "programs/sentrelctl/SilentTerminal.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel::sentrelctl {
namespace {

using programs::ExitCode;
using programs::ProgramError;
using programs::UsageError;

/// A text that is wiped when it goes.
class Secret {
 public:
  Secret() = default;
  ~Secret() { wipe(); }
  Secret(const Secret&) = delete;
  Secret& operator=(const Secret&) = delete;

  /// So much room that the text never moves and leaves a copy behind.
  void reserve() { text_.reserve(capacity); }
  bool append(char c) {
    if (text_.size() == capacity) return false;
    text_ += c;
    return true;
  }

  /// That of a line that ends as in a file from another system.
  void dropCarriageReturn() {
    if (text_.ends_with('\r')) text_.pop_back();
  }

  const std::string& text() const noexcept { return text_; }

 private:
  static constexpr std::size_t capacity = 4096;

  void wipe() noexcept {
    volatile char* at = text_.data();
    for (std::size_t i = 0; i < text_.size(); ++i)
      at[i] = 0;
  }

  std::string text_;
};

/// One line of standard input, read byte by byte so that no buffer keeps it. What is too long to
/// be kept is read to its end and leaves the text as it is without it: false.
bool readLine(Secret& line, const char* prompt) {
  const SilentTerminal silent(prompt);
  line.reserve();
  bool fits = true;
  for (char c = 0; ::read(STDIN_FILENO, &c, 1) == 1 && c != '\n';)
    fits = line.append(c) && fits;
  line.dropCarriageReturn();
  return fits;
}

/// On a terminal nobody sees what was typed, so it is typed twice.
void readNewPasscode(Secret& passcode) {
  readLine(passcode, "passcode: ");
  programs::requireTypable(passcode.text());
  if (!isatty(STDIN_FILENO)) return;
  Secret again;
  if (!readLine(again, "again: ") || again.text() != passcode.text())
    throw ProgramError("the two passcodes differ; the old one, if any, is as it was");
}

ExitCode setPasscode(const Context& context) {
  readSettingsFile(context);
  Secret passcode;
  readNewPasscode(passcode);
  SNSettings& settings = SNSettings::sharedSettings();
  // Where the cipher fails, the library removes the old one.
  if (!settings.encryptString(passcode.text()))
    throw ProgramError("the passcode could not be enciphered; the old one, if any, is as it was");
  const SettingsChange change(context);
  if (!settings.savePasscode(passcode.text()))
    throw ProgramError("the passcode could not be stored; the old one, if any, is as it was");
  return programs::exitDone;
}

ExitCode removePasscode(const Context& context) {
  const SettingsChange change(context);
  if (!SNSettings::sharedSettings().removePasscode())
    throw ProgramError("the passcode could not be removed; it is as it was");
  return programs::exitDone;
}

ExitCode checkPasscode(const Context& context) {
  readSettingsFile(context);
  Secret candidate;
  const bool matches = readLine(candidate, "passcode: ") &&
                       SNSettings::sharedSettings().validatePasscode(candidate.text());
  std::puts(matches ? "YES" : "NO");
  return matches ? programs::exitDone : programs::exitNo;
}

ExitCode passcode(const Context& context, const Arguments& arguments) {
  if (arguments[0] == "set") return setPasscode(context);
  if (arguments[0] == "remove") return removePasscode(context);
  if (arguments[0] == "check") return checkPasscode(context);
  throw UsageError("expected passcode set, remove or check");
}

constexpr Command commands[] = {
    {"passcode", "set|remove|check",
     "reads a passcode, six digits, from standard input, without echo", 1, 1, passcode},
};

}  // namespace

CommandTable passcodeCommands() {
  return commands;
}

}  // namespace sentrel::sentrelctl
