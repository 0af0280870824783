#pragma once

#include <chrono>

namespace sentrel {

/// Every length of time in this library.
using Seconds = std::chrono::duration<double>;

/// A moment on the wall clock, counted from the start of 1970 in Universal Time.
using WallTime = std::chrono::time_point<std::chrono::system_clock, Seconds>;

/// A moment on a clock that nobody can set, counted from any start.
using SteadyTime = std::chrono::time_point<std::chrono::steady_clock, Seconds>;

}  // namespace sentrel
