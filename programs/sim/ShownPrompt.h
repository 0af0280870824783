#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "programs/sim/Phone.h"
#include "sentrel/authui/SNAuthenticationView.h"

namespace sentrel::sim {

/// A prompt as it stands on the screen, whoever believes it to be there.
struct ShownPrompt {
  PhoneProcess* process;
  /// What is moved when the alert shakes.
  std::shared_ptr<UIView> alertView;
  std::string title;
  std::string message;
  bool isPasscodeShown;
  std::vector<std::string> buttons;
  std::size_t typedCount;
  /// None where there is no glyph.
  std::optional<std::int64_t> glyphState;
};

/// The prompts that the user can see, the frontmost first.
std::vector<ShownPrompt> shownPrompts(Phone& phone);

/// "passcode" or "glyph".
std::string modeOf(const ShownPrompt& prompt);

/// The buttons in quotes.
std::string buttonsOf(const ShownPrompt& prompt);

}  // namespace sentrel::sim
