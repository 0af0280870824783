#include "device/screen/Png.h"

#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIVisualEffectView.h"
#include "tests/screen/ScreenTest.h"
#include "tests/support/TemporaryFolder.h"

namespace sentrel::screen {
namespace {

class Png : public ScreenTest {
 protected:
  std::string path(const std::string& name) const { return folder_.path(name); }

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

  TemporaryFolder folder_;
};

TEST_F(Png, HoldsWhatWasPainted) {
  const Canvas scene = paintScene();
  writePng(scene, path("scene.png"));
  const Canvas read(SurfaceHandle(cairo_image_surface_create_from_png(path("scene.png").c_str())));
  EXPECT_EQ(differingPixels(scene, read), 0);
}

TEST_F(Png, ThatIsReadShowsAsItWasWritten) {
  Canvas half({2, 1}, 1);
  painter_.paint(*makeBox(CGRectMake(0, 0, 1, 1), red().colorWithAlphaComponent(0.5)), half, {});
  writePng(half, path("half.png"));
  const auto image = readPng(path("half.png"));
  ASSERT_TRUE(image);
  EXPECT_THAT(image->rgba, ElementsAre(255, 0, 0, 128, 0, 0, 0, 0));
  std::ofstream(path("no.png")) << "no picture";
  EXPECT_EQ(readPng(path("no.png")), nullptr);
  EXPECT_EQ(readPng(path("missing.png")), nullptr);
}

TEST_F(Png, PaintingTwiceGivesTheSameBytes) {
  writePng(paintScene(), path("one.png"));
  writePng(paintScene(), path("other.png"));
  EXPECT_THAT(folder_.content("one.png"), testing::StartsWith("\x89PNG"));
  EXPECT_EQ(folder_.content("one.png"), folder_.content("other.png"));
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
