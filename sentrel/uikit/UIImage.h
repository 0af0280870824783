#pragma once

#include <cstdint>
#include <vector>

namespace sentrel {

/// A picture: rows from the top, four bytes a pixel (red, green, blue, alpha), the colours not
/// multiplied by alpha. `rgba` has width × height × 4 bytes.
struct UIImage {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgba;
  /// Pixels a point.
  double scale = 1;

  friend bool operator==(const UIImage&, const UIImage&) = default;
};

}  // namespace sentrel
