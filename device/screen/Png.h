#pragma once

#include <memory>
#include <string>

#include "device/screen/Canvas.h"
#include "sentrel/uikit/UIImage.h"

namespace sentrel::screen {

/// Writes the picture to a PNG file, in place of one that is there. The same picture gives the same
/// bytes. Throws std::runtime_error, which names the file and the fault.
void writePng(const Canvas& canvas, const std::string& path);

/// The picture in a PNG file; null where there is none that can be read.
std::shared_ptr<const UIImage> readPng(const std::string& path);

}  // namespace sentrel::screen
