#include "device/screen/Png.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIVisualEffectView.h"
#include "tests/screen/ScreenTest.h"

namespace sentrel::screen {
namespace {

class Png : public ScreenTest {
 protected:
  Png() { std::filesystem::create_directories(folder_); }
  ~Png() override { std::filesystem::remove_all(folder_); }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  static std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// A text on a blur on a colour, painted with fonts of its own.
  Canvas paintScene() {
    const auto scene = makeBox(CGRectMake(0, 0, 100, 100), red());
    scene->addSubview(std::make_shared<UIVisualEffectView>(UIBlurEffect::effectWithStyle(1),
                                                           CGRectMake(10, 10, 80, 80)));
    const auto label = std::make_shared<UILabel>(CGRectMake(10, 10, 80, 80));
    label->setNumberOfLines(0);
    label->setText("Scan your fingerprint");
    scene->addSubview(label);
    Canvas canvas({100, 100}, 2);
    Painter(std::make_shared<PinnedFonts>()).paint(*scene, canvas, {});
    return canvas;
  }

  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / ("sentrel-png-" + std::to_string(getpid()));
};

TEST_F(Png, HoldsWhatWasPainted) {
  const Canvas scene = paintScene();
  writePng(scene, path("scene.png"));
  const Canvas read(SurfaceHandle(cairo_image_surface_create_from_png(path("scene.png").c_str())));
  EXPECT_EQ(differingPixels(scene, read), 0);
}

TEST_F(Png, PaintingTwiceGivesTheSameBytes) {
  writePng(paintScene(), path("one.png"));
  writePng(paintScene(), path("other.png"));
  EXPECT_THAT(contents(path("one.png")), testing::StartsWith("\x89PNG"));
  EXPECT_EQ(contents(path("one.png")), contents(path("other.png")));
}

TEST_F(Png, AFileThatCannotBeWrittenIsNamed) {
  const std::string nowhere = path("nowhere/picture.png");
  EXPECT_THAT(
      [&] {
        writePng(Canvas({1, 1}, 1), nowhere);
      },
      testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr(nowhere)));
}

}  // namespace
}  // namespace sentrel::screen
