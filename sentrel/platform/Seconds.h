#pragma once

#include <chrono>

namespace sentrel {

/// Every length of time in this library.
using Seconds = std::chrono::duration<double>;

/// A moment on the wall clock, counted from the start of 1970 in Universal Time.
using WallTime = std::chrono::time_point<std::chrono::system_clock, Seconds>;

}  // namespace sentrel
