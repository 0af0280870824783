#pragma once

namespace sentrel::programs {

/// Whether a home-screen process answers now. For what it is only told, and whose reply says
/// nothing, and for telling a no from silence.
bool isHomeScreenThere();

/// Throws ProgramError where there is none.
void requireHomeScreen();

}  // namespace sentrel::programs
