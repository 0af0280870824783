#pragma once

#include <cstddef>
#include <cstdint>

namespace sentrel::storage {

/// The largest property list that is read or written, in bytes. Settings with a thousand protected
/// items take about a tenth of it.
constexpr std::size_t maximumPropertyListSize = 1 << 20;

/// How many containers may lie inside one another. libplist recurses once a level.
constexpr std::size_t maximumPropertyListDepth = 256;

/// libplist moves the rest of a text once for every escape in it. This bounds escapes times bytes,
/// summed over all texts, to some tens of milliseconds.
constexpr std::uint64_t maximumEscapeWork = std::uint64_t{1} << 32;

}  // namespace sentrel::storage
