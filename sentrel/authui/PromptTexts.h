#pragma once

#include <string_view>

namespace sentrel::prompt_texts {

// What every prompt says, whichever surface it is on.

inline constexpr std::string_view productName = "Sentrel";
inline constexpr std::string_view cancel = "Cancel";
inline constexpr std::string_view enterPasscode = "Enter Passcode";

}  // namespace sentrel::prompt_texts
