#pragma once

#include <string>

namespace sentrel {

// The one button of a prompt that changes between glyph and passcode. Its title names the
// mode that is not on, and is all that it is told by, in the host application's language.

bool isSwitchButtonTitle(const std::string& title);

/// The title after a tap on the switch button `title`.
std::string switchButtonTitleAfter(const std::string& title);

}  // namespace sentrel
