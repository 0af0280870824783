#pragma once

#include <string>

namespace sentrel {

/// What text is measured and drawn with: a request, which the device meets with the nearest face
/// that it has.
struct Font {
  /// The face's name, or empty for the system's own face.
  std::string name;
  /// Points.
  double size = 17;
  bool bold = false;
  bool italic = false;

  friend bool operator==(const Font&, const Font&) = default;
};

}  // namespace sentrel
