#include "device/screen/GlyphLook.h"
#include "sentrel/uikit/PKGlyphView.h"
#include "tests/screen/ScreenTest.h"

namespace sentrel::screen {
namespace {

class GlyphPainting : public ScreenTest {
 protected:
  GlyphPainting() { glyph_->setFrame(CGRectMake(0, 0, 63, 63)); }

  Canvas paintAs(GlyphKind kind) {
    Canvas canvas({63, 63}, 1);
    painter_.paint(*glyph_, canvas, {.glyphKind = kind, .moment = device_.time().steadyNow()});
    return canvas;
  }
  Canvas paintState(std::int64_t state, GlyphKind kind) {
    glyph_->setState(state, /*animated=*/false, {});
    return paintAs(kind);
  }

  std::shared_ptr<PKGlyphView> glyph_ = std::make_shared<PKGlyphView>(2, PKGlyphViewClass{});
};

TEST_F(GlyphPainting, EveryLookAndKindIsItsOwnPicture) {
  std::vector<Canvas> pictures;
  for (const std::int64_t state : {0, 3, 12, 10})
    pictures.push_back(paintState(state, GlyphKind::fingerprint));
  for (const std::int64_t state : {2, 4, 1})
    pictures.push_back(paintState(state, GlyphKind::face));
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    EXPECT_TRUE(inkOf(pictures[i])) << i;
    for (std::size_t j = 0; j < i; ++j)
      EXPECT_GT(differingPixels(pictures[i], pictures[j]), 50) << i << " and " << j;
  }
}

TEST_F(GlyphPainting, TheGlyphHasItsPrimaryColour) {
  glyph_->setPrimaryColor(red());
  const Canvas canvas = paintState(0, GlyphKind::fingerprint);
  for (int y = 0; y < canvas.height(); ++y)
    for (int x = 0; x < canvas.width(); ++x)
      ASSERT_EQ(redOf(canvas.pixel(x, y)), alphaOf(canvas.pixel(x, y)));
}

TEST_F(GlyphPainting, AChangeOfStateIsSeenOnItsWay) {
  const Canvas before = paintState(0, GlyphKind::fingerprint);
  glyph_->setState(12, /*animated=*/true, {});
  EXPECT_EQ(differingPixels(paintAs(GlyphKind::fingerprint), before), 0);
  device_.time().advance(Seconds(0.2));
  const Canvas between = paintAs(GlyphKind::fingerprint);
  device_.time().advance(Seconds(1));
  const Canvas after = paintAs(GlyphKind::fingerprint);
  EXPECT_NE(differingPixels(between, before), 0);
  EXPECT_NE(differingPixels(between, after), 0);
  EXPECT_EQ(differingPixels(after, paintState(12, GlyphKind::fingerprint)), 0);
}

TEST(GlyphLook, ANumberWithoutAMeaningLooksIdle) {
  for (const std::int64_t state : {-1, 8, 9, 11, 13, 99})
    for (const GlyphKind kind : {GlyphKind::face, GlyphKind::fingerprint})
      EXPECT_EQ(glyphLook(state, kind), GlyphLook::idle) << state;
}

}  // namespace
}  // namespace sentrel::screen
