#pragma once

#include <cstddef>

namespace sentrel::storage {

/// The largest property list that is read or written, in bytes: a folder of thirty thousand icons.
constexpr std::size_t maximumPropertyListSize = 8 << 20;

/// How many containers may lie inside one another. Readers and writers recurse once a level.
constexpr std::size_t maximumPropertyListDepth = 256;

}  // namespace sentrel::storage
