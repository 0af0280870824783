#include "programs/gallery/Gallery.h"

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "device/screen/Png.h"

namespace sentrel::gallery {

Gallery::Gallery(std::string folder)
    : folder_(std::move(folder)), fonts_(std::make_shared<screen::PinnedFonts>()) {
  std::error_code error;
  std::filesystem::create_directories(folder_, error);
  if (error) throw std::runtime_error("cannot make the folder " + folder_ + ": " + error.message());
}

void Gallery::add(const std::string& name, const screen::Canvas& picture) {
  const std::string path = folder_ + "/" + name + ".png";
  screen::writePng(picture, path);
  std::cout << path << '\n';
}

}  // namespace sentrel::gallery
