#pragma once

#include <functional>
#include <string>
#include <vector>

#include "programs/common/ExitCode.h"

namespace sentrel::programs {

/// What a command came to: one line, and how a program ends that was started for it alone.
struct Answer {
  std::string text;
  ExitCode code = exitDone;
};

using Reply = std::function<void(const Answer&)>;

/// The commands of an application's process, for its usage text.
inline constexpr const char* appCommandsUsage =
    "  ask [ITEM]          whether it needs authentication now: YES or NO\n"
    "  listed [ITEM]       whether it is configured as protected, whatever else: YES or NO\n"
    "  session [ITEM]      whether an open session covers it: YES or NO\n"
    "  unlock [ITEM]       records that it was authenticated just now: OK, or NO where nobody\n"
    "                      keeps it\n"
    "  name [ITEM]         its name as shown to people\n"
    "  application [ITEM]  whether such an application is installed: YES or NO\n"
    "  system [ITEM]       whether it is one of the system's own: YES or NO\n"
    "  hidden [ITEM]       whether the home screen hides it: YES or NO\n"
    "  foldered [ITEM]     whether it lies in a folder: YES or NO\n"
    "  folder [ITEM]       the folder that it lies in\n"
    "  networks            the Wi-Fi networks that the device has joined before\n"
    "  network             the one that it is on\n"
    "  biometrics          whether the device has a biometric sensor: YES or NO\n"
    "  passcode            whether the device has a passcode: YES or NO\n"
    "  locked              whether it is locked: YES or NO\n"
    "  dark                whether it is in dark mode: YES or NO\n"
    "  finger              whether a finger is on its sensor: YES or NO\n"
    "  suspend             sends the application at the front away: OK, or NO where nobody does\n"
    "  photos              has the home screen ask the owner for authentication, as Photos did\n"
    "                      before system 11: OK once it succeeded, NO when it was cancelled\n"
    "                      or nobody asks\n"
    "What nobody can tell is answered by NO or NONE.\n";

/// Obeys COMMAND [ITEM] as the application `ownIdentifier`. `reply` is called once: now, or, for
/// what waits for the owner, when it has ended. Throws UsageError for anything else.
void obey(const std::vector<std::string>& words, const std::string& ownIdentifier,
          const Reply& reply);

}  // namespace sentrel::programs
