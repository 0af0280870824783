#include "device/screen/Blur.h"

#include <cmath>

#include "sentrel/uikit/UIVisualEffectView.h"
#include "tests/screen/ScreenTest.h"

namespace sentrel::screen {
namespace {

/// The left half of a 100 by 100 screen is red, the right half blue.
class VisualEffect : public ScreenTest {
 protected:
  VisualEffect() {
    screen_->addSubview(makeBox(CGRectMake(0, 0, 50, 100), red()));
    screen_->addSubview(makeBox(CGRectMake(50, 0, 50, 100), blue()));
  }

  std::shared_ptr<UIVisualEffectView> addBlur(const CGRect& frame, std::int64_t style) {
    auto blur = std::make_shared<UIVisualEffectView>(UIBlurEffect::effectWithStyle(style), frame);
    screen_->addSubview(blur);
    return blur;
  }

  std::shared_ptr<UIView> screen_ = std::make_shared<UIView>(CGRectMake(0, 0, 100, 100));
};

TEST_F(VisualEffect, WhatLiesBehindRunsIntoEachOther) {
  addBlur(CGRectMake(0, 0, 100, 100), 1);
  const Canvas canvas = paint(*screen_);
  const int edge = redOf(canvas.pixel(49, 50)) - redOf(canvas.pixel(50, 50));
  EXPECT_LT(edge, 16) << "the edge is still sharp";
  EXPECT_GT(redOf(canvas.pixel(5, 50)), redOf(canvas.pixel(95, 50)) + 32) << "only one colour left";
  EXPECT_EQ(alphaOf(canvas.pixel(50, 50)), 255);
}

TEST_F(VisualEffect, NothingOutsideTheRoundedRectangleIsTouched) {
  addBlur(CGRectMake(30, 30, 40, 40), 1)->layer().setCornerRadius(20);
  EXPECT_THAT(pixels(*screen_, {{31, 31}, {68, 68}, {49, 20}, {45, 50}}),
              ElementsAre(opaqueRed, opaqueBlue, opaqueRed, testing::Ne(opaqueRed)));
}

TEST_F(VisualEffect, StylesDifferInLightness) {
  const auto lightness = [this](std::int64_t style) {
    const auto blur = addBlur(CGRectMake(0, 0, 100, 100), style);
    const std::uint32_t pixel = paint(*screen_).pixel(20, 50);
    blur->removeFromSuperview();
    return channel(pixel, 16) + channel(pixel, 8) + channel(pixel, 0);
  };
  EXPECT_GT(lightness(0), lightness(1));
  EXPECT_GT(lightness(1), lightness(2));
}

TEST_F(VisualEffect, DarkTextCanBeReadOnALightVeilOverTheDarkestScreen) {
  const auto luminance = [](double shade) { return std::pow((shade + 0.055) / 1.055, 2.4); };
  const double text = luminance(UIColor::darkGrayColor().resolved({}).red);
  for (const std::int64_t style : {0, 1}) {
    const auto screen = makeBox(CGRectMake(0, 0, 100, 100), UIColor::blackColor());
    screen->addSubview(std::make_shared<UIVisualEffectView>(UIBlurEffect::effectWithStyle(style),
                                                            CGRectMake(0, 0, 100, 100)));
    const double veil = luminance(redOf(paint(*screen).pixel(50, 50)) / 255.0);
    EXPECT_GE((veil + 0.05) / (text + 0.05), 4.5) << style;
  }
}

TEST_F(VisualEffect, WhatIsInFrontOfTheBlurStaysSharp) {
  const auto blur = addBlur(CGRectMake(0, 0, 100, 100), 2);
  blur->contentView()->setFrame(CGRectMake(0, 0, 100, 100));
  blur->contentView()->addSubview(makeBox(CGRectMake(40, 40, 10, 10), UIColor::whiteColor()));
  screen_->addSubview(makeBox(CGRectMake(0, 0, 10, 10), blue()));
  EXPECT_THAT(pixels(*screen_, {{40, 40}, {9, 9}}), ElementsAre(opaqueWhite, opaqueBlue));
}

TEST_F(VisualEffect, ABlurInsideATransparentViewStillSeesTheScreen) {
  const auto sheet = std::make_shared<UIView>(CGRectMake(0, 0, 100, 100));
  sheet->addSubview(std::make_shared<UIVisualEffectView>(UIBlurEffect::effectWithStyle(1),
                                                         CGRectMake(0, 0, 100, 100)));
  screen_->addSubview(sheet);
  // Where a blur that sees nothing would let the sharp edge between the colours through.
  const std::uint32_t opaque = paint(*screen_).pixel(49, 50);
  sheet->setAlpha(0.999);
  const std::uint32_t grouped = paint(*screen_).pixel(49, 50);
  for (const int shift : {0, 8, 16})
    EXPECT_NEAR(channel(opaque, shift), channel(grouped, shift), 3);
}

TEST_F(VisualEffect, AMovedAndTurnedBlurBlursWhereItIsSeen) {
  const auto blur = addBlur(CGRectMake(200, 40, 20, 20), 1);
  blur->setTransform(CGAffineTransform::makeTranslation(-160, 0));
  EXPECT_NE(paint(*screen_).pixel(48, 50), opaqueRed);
  blur->setTransform({});
  EXPECT_EQ(paint(*screen_).pixel(48, 50), opaqueRed);
}

TEST(Blur, AUniformPictureStaysAsItIs) {
  Canvas canvas({20, 20}, 1);
  const CairoHandle cairo(cairo_create(canvas.surface()));
  cairo_set_source_rgb(cairo.get(), 0.2, 0.4, 0.8);
  cairo_paint(cairo.get());
  const std::uint32_t before = canvas.pixel(0, 0);
  blurGaussian(canvas.surface(), 6);
  EXPECT_EQ(canvas.pixel(0, 0), before);
  EXPECT_EQ(canvas.pixel(10, 10), before);
}

TEST(Blur, APointSpreadsEquallyToAllSidesAndKeepsItsLight) {
  Canvas canvas({41, 41}, 1);
  const CairoHandle cairo(cairo_create(canvas.surface()));
  cairo_rectangle(cairo.get(), 18, 18, 5, 5);
  cairo_set_source_rgb(cairo.get(), 1, 1, 1);
  cairo_fill(cairo.get());
  blurGaussian(canvas.surface(), 3);
  EXPECT_EQ(canvas.pixel(14, 20), canvas.pixel(26, 20));
  EXPECT_EQ(canvas.pixel(20, 14), canvas.pixel(14, 20));
  EXPECT_GT(redOf(canvas.pixel(20, 20)), redOf(canvas.pixel(16, 20)));
  int light = 0;
  for (int y = 0; y < 41; ++y)
    for (int x = 0; x < 41; ++x)
      light += redOf(canvas.pixel(x, y));
  EXPECT_NEAR(light, 25 * 255, 25 * 255 * 0.05);
}

}  // namespace
}  // namespace sentrel::screen
