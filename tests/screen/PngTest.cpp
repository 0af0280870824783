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

TEST_F(Png, APictureComesBackAsItWasWritten) {
  const Canvas scene = paintScene();
  writePng(scene, path("scene.png"));
  EXPECT_EQ(differingPixels(readPng(path("scene.png")), scene), 0U);
}

TEST_F(Png, PaintingTwiceGivesTheSameBytes) {
  writePng(paintScene(), path("one.png"));
  writePng(paintScene(), path("other.png"));
  EXPECT_FALSE(contents(path("one.png")).empty());
  EXPECT_EQ(contents(path("one.png")), contents(path("other.png")));
}

TEST_F(Png, DifferencesAreCountedAndSizesCompared) {
  const Canvas one({10, 10}, 1);
  Canvas other({10, 10}, 1);
  painter_.paint(*makeBox(CGRectMake(2, 2, 3, 1), red()), other, {});
  EXPECT_EQ(differingPixels(one, other), 3U);
  EXPECT_EQ(differingPixels(one, Canvas({10, 11}, 1)), std::nullopt);
}

TEST_F(Png, AFileThatCannotBeWrittenOrReadIsNamed) {
  const auto message = [](const auto& action) -> std::string {
    try {
      action();
      return "";
    } catch (const std::runtime_error& error) {
      return error.what();
    }
  };
  const std::string nowhere = path("nowhere/picture.png");
  EXPECT_NE(message([&] {
              writePng(Canvas({1, 1}, 1), nowhere);
            }).find(nowhere),
            std::string::npos);
  EXPECT_NE(message([&] { readPng(nowhere); }).find(nowhere), std::string::npos);
  std::ofstream(path("text.png")) << "no picture";
  EXPECT_NE(message([&] { readPng(path("text.png")); }).find("text.png"), std::string::npos);
}

}  // namespace
}  // namespace sentrel::screen
