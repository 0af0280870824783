#include <exception>
#include <iostream>

#include "programs/common/ExitCode.h"
#include "programs/gallery/Gallery.h"

namespace {

void paintEverything(sentrel::gallery::Gallery& gallery) {
  using namespace sentrel::gallery;
  paintPrompts(gallery);
  paintGlyphs(gallery);
  paintPasscodes(gallery);
  paintPromptTexts(gallery);
  paintOverlays(gallery);
  paintCallerCovers(gallery);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || argv[1][0] == '-') {
    std::cerr << "usage: sentrel-gallery OUT-FOLDER\n"
                 "Paints every screen of the prompt, the overlay and the caller cover into PNG "
                 "files.\n";
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
