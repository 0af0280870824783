#pragma once

#include <string>

namespace sentrel {

// The one button of a prompt that changes between glyph and passcode. It always names the mode that
// a tap would bring, and is told by its title alone, in the host application's language.

bool isSwitchButtonTitle(const std::string& title);

/// The title after a tap on the switch button `title`.
std::string switchButtonTitleAfter(const std::string& title);

}  // namespace sentrel
