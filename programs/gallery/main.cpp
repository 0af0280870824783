#include <exception>
#include <iostream>
#include <string_view>

#include "programs/common/ExitCode.h"
#include "programs/gallery/Gallery.h"

namespace {

constexpr const char* usage =
    "usage: sentrel-gallery OUT-FOLDER\n"
    "Paints every screen of the prompt, the overlay, the caller cover and the passcode screen "
    "into\n"
    "PNG files.\n";

void paintEverything(sentrel::gallery::Gallery& gallery) {
  using namespace sentrel::gallery;
  paintPrompts(gallery);
  paintGlyphs(gallery);
  paintPasscodes(gallery);
  paintPromptTexts(gallery);
  paintOverlays(gallery);
  paintCallerCovers(gallery);
  paintPasscodeScreens(gallery);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view argument = argc == 2 ? argv[1] : "";
  if (argument == "--help") {
    std::cout << usage;
    return sentrel::programs::exitDone;
  }
  if (argument.empty() || argument.starts_with('-')) {
    std::cerr << usage;
    return sentrel::programs::exitUsage;
  }
  try {
    sentrel::gallery::Gallery gallery(argv[1]);
    paintEverything(gallery);
    return sentrel::programs::exitDone;
  } catch (const std::exception& error) {
    std::cerr << "sentrel-gallery: " << error.what() << '\n';
    return sentrel::programs::exitCouldNot;
  }
}
