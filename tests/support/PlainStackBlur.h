#pragma once

#include <cstdint>

namespace sentrel {

/// The stack blur step by step as it is written down: a ring of samples and three sums a channel, a
/// table in place of each division, a plane of means a channel between the passes. In place; radius
/// 0 to 4094. The table takes 1 KiB × (radius + 1)², so that above 126 it divides instead.
void plainStackBlur(std::uint8_t* buffer, std::uint32_t width, std::uint32_t height, int radius);

}  // namespace sentrel
