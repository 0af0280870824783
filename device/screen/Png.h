#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "device/screen/Canvas.h"

namespace sentrel::screen {

/// Writes the picture to a PNG file, in place of one that is there. The same picture gives the same
/// bytes. Throws std::runtime_error, which names the file and the fault.
void writePng(const Canvas& canvas, const std::string& path);

/// Throws std::runtime_error, which names the file and the fault.
Canvas readPng(const std::string& path);

/// How many pixels differ between two pictures; none where their sizes differ.
std::optional<std::size_t> differingPixels(const Canvas& one, const Canvas& other);

}  // namespace sentrel::screen
