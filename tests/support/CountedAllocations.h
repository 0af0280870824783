#pragma once

#include <cstddef>

namespace sentrel {

/// How often this thread has taken memory from the heap by operator new, the library's own use
/// included.
std::size_t allocationsSoFar() noexcept;

}  // namespace sentrel
