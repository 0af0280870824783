#pragma once

#include <memory>
#include <string>

#include "device/screen/Canvas.h"
#include "device/screen/PinnedFonts.h"

namespace sentrel::gallery {

/// The folder that the pictures are written to.
class Gallery {
 public:
  /// Makes the folder where it is missing. Throws std::runtime_error where it cannot.
  explicit Gallery(std::string folder);

  /// Writes FOLDER/`name`.png and says so on standard output.
  void add(const std::string& name, const screen::Canvas& picture);

  const std::shared_ptr<const screen::PinnedFonts>& fonts() const noexcept { return fonts_; }

 private:
  std::string folder_;
  std::shared_ptr<const screen::PinnedFonts> fonts_;
};

// Each family of pictures in a file of its own.
void paintPrompts(Gallery& gallery);
void paintGlyphs(Gallery& gallery);
void paintPasscodes(Gallery& gallery);
void paintPromptTexts(Gallery& gallery);
void paintOverlays(Gallery& gallery);
void paintCallerCovers(Gallery& gallery);
void paintPasscodeScreens(Gallery& gallery);

}  // namespace sentrel::gallery
