#include "programs/common/CommandLine.h"
#include "programs/common/ExitCode.h"
#include "programs/gallery/Gallery.h"

namespace {

constexpr const char* usage =
    "usage: sentrel-gallery [options] OUT-FOLDER\n"
    "\n"
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

int run(const sentrel::programs::CommandLine& line) {
  if (line.arguments.size() != 1 || line.arguments[0].empty())
    throw sentrel::programs::UsageError("expected OUT-FOLDER");
  sentrel::gallery::Gallery gallery(line.arguments[0]);
  paintEverything(gallery);
  return sentrel::programs::exitDone;
}

}  // namespace

int main(int argc, char** argv) {
  return sentrel::programs::runProgram(
      {.name = "sentrel-gallery", .usage = usage, .body = run, .hasDevice = false}, argc, argv);
}
