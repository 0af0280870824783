#include "device/screen/Painter.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UIWindow.h"
#include "tests/screen/ScreenTest.h"

namespace sentrel::screen {
namespace {

class ViewPainting : public ScreenTest {};

TEST_F(ViewPainting, AViewFillsItsFrameAtTheCanvasesScale) {
  Canvas canvas({100, 100}, 2);
  painter_.paint(*makeBox(CGRectMake(10, 20, 30, 5), red()), canvas, {});
  EXPECT_EQ(inkOf(canvas), (Ink{20, 40, 80, 50}));
  EXPECT_EQ(canvas.pixel(50, 45), opaqueRed);
}

TEST_F(ViewPainting, SubviewsLieInFrontInOrderAndInTheirSuperviewsCoordinates) {
  const auto box = makeBox(CGRectMake(20, 20, 50, 50), red());
  box->addSubview(makeBox(CGRectMake(10, 10, 20, 20), UIColor::whiteColor()));
  box->addSubview(makeBox(CGRectMake(20, 20, 20, 20), blue()));
  EXPECT_THAT(pixels(*box, {{25, 25}, {35, 35}, {45, 45}}),
              ElementsAre(opaqueRed, opaqueWhite, opaqueBlue));
}

TEST_F(ViewPainting, OnlyAClippingViewCutsWhatSticksOut) {
  const auto box = makeBox(CGRectMake(20, 20, 20, 20), red());
  box->addSubview(makeBox(CGRectMake(10, 10, 40, 5), blue()));
  EXPECT_EQ(paint(*box).pixel(55, 32), opaqueBlue);
  box->setClipsToBounds(true);
  EXPECT_THAT(pixels(*box, {{55, 32}, {35, 32}}), ElementsAre(0, opaqueBlue));
}

TEST_F(ViewPainting, RoundCornersCutTheBackgroundAndWhatIsClipped) {
  const auto box = makeBox(CGRectMake(0, 0, 40, 40), red());
  box->layer().setCornerRadius(20);
  box->addSubview(makeBox(CGRectMake(0, 0, 40, 40), blue()));
  EXPECT_EQ(paint(*box).pixel(1, 1), opaqueBlue);
  box->setClipsToBounds(true);
  EXPECT_THAT(pixels(*box, {{1, 1}, {20, 20}}), ElementsAre(0, opaqueBlue));
}

TEST_F(ViewPainting, ABorderStaysInsideAndLiesOverTheSubviews) {
  const auto box = makeBox(CGRectMake(10, 10, 40, 40), UIColor::whiteColor());
  box->layer().setBorderWidth(4);
  box->layer().setBorderColor(red());
  box->addSubview(makeBox(CGRectMake(0, 0, 40, 40), blue()));
  EXPECT_THAT(pixels(*box, {{9, 30}, {10, 30}, {13, 30}, {14, 30}}),
              ElementsAre(0, opaqueRed, opaqueRed, opaqueBlue));
}

TEST_F(ViewPainting, AlphaCountsForAViewAndItsContentsAsAWhole) {
  const auto box = makeBox(CGRectMake(0, 0, 40, 40), red());
  box->addSubview(makeBox(CGRectMake(0, 0, 40, 40), blue()));
  box->setAlpha(0.5);
  const std::uint32_t pixel = paint(*box).pixel(20, 20);
  EXPECT_NEAR(alphaOf(pixel), 128, 1);
  EXPECT_EQ(redOf(pixel), 0) << "the background shows through what covers it";
}

TEST_F(ViewPainting, HiddenAndTransparentViewsTakeTheirContentsAlong) {
  const auto box = makeBox(CGRectMake(0, 0, 40, 40), red());
  box->addSubview(makeBox(CGRectMake(0, 0, 40, 40), blue()));
  box->setHidden(true);
  EXPECT_FALSE(inkOf(paint(*box)));
  box->setHidden(false);
  box->setAlpha(0);
  EXPECT_FALSE(inkOf(paint(*box)));
}

TEST_F(ViewPainting, ATransformTurnsTheViewAboutItsCentre) {
  const auto bar = makeBox(CGRectMake(20, 40, 60, 10), red());
  bar->setTransform(CGAffineTransform::makeRotation(std::numbers::pi / 2));
  EXPECT_THAT(pixels(*bar, {{50, 20}, {50, 70}, {25, 45}}), ElementsAre(opaqueRed, opaqueRed, 0));
}

TEST_F(ViewPainting, ViewsWithoutAreaPaintNothingButWhatSticksOutOfThem) {
  for (const CGRect& frame :
       {CGRectMake(50, 50, 0, 0), CGRectMake(50, 50, 0, 30), CGRectMake(50, 50, -20, -20)}) {
    const auto empty = makeBox(frame, red());
    empty->layer().setBorderWidth(3);
    EXPECT_FALSE(inkOf(paint(*empty)));
    empty->addSubview(makeBox(CGRectMake(0, 0, 10, 10), blue()));
    EXPECT_TRUE(inkOf(paint(*empty)));
    empty->setClipsToBounds(true);
    EXPECT_FALSE(inkOf(paint(*empty)));
  }
}

TEST_F(ViewPainting, GeometryWithoutMeaningSpoilsNothingElse) {
  const double noNumber = std::numeric_limits<double>::quiet_NaN();
  const auto root = std::make_shared<UIView>(CGRectMake(0, 0, 100, 100));
  for (const double value : {noNumber, HUGE_VAL, 1e300}) {
    root->addSubview(makeBox(CGRectMake(value, 0, 10, 10), red()));
    root->addSubview(makeBox(CGRectMake(0, 0, 10, value), red()));
  }
  const auto flat = makeBox(CGRectMake(0, 0, 10, 10), red());
  flat->setTransform({0, 0, 0, 0, 0, 0});
  root->addSubview(flat);
  root->addSubview(makeBox(CGRectMake(80, 80, 10, 10), blue()));
  EXPECT_EQ(paint(*root).pixel(85, 85), opaqueBlue);
}

TEST_F(ViewPainting, SystemColoursFollowTheStyle) {
  const auto box = makeBox(CGRectMake(0, 0, 40, 40), UIColor::systemBackgroundColor());
  EXPECT_EQ(paint(*box, UIUserInterfaceStyle::light).pixel(5, 5), opaqueWhite);
  EXPECT_LT(redOf(paint(*box, UIUserInterfaceStyle::dark).pixel(5, 5)), 64);
}

TEST_F(ViewPainting, APictureIsStretchedOverItsViewWithItsTransparency) {
  auto image = std::make_shared<UIImage>();
  image->width = 2;
  image->height = 1;
  image->rgba = {255, 0, 0, 255, 0, 0, 255, 128};
  const auto view = std::make_shared<UIImageView>(CGRectMake(0, 0, 80, 40));
  view->setImage(image);
  const Canvas canvas = paint(*view);
  EXPECT_EQ(canvas.pixel(5, 20), opaqueRed);
  EXPECT_NEAR(alphaOf(canvas.pixel(75, 20)), 128, 1);
  EXPECT_NEAR(blueOf(canvas.pixel(75, 20)), 128, 1);
}

TEST_F(ViewPainting, APictureWithTooFewPixelsIsNotPainted) {
  auto image = std::make_shared<UIImage>();
  image->width = 100;
  image->height = 100;
  image->rgba = {255, 0, 0, 255};
  const auto view = std::make_shared<UIImageView>(CGRectMake(0, 0, 80, 40));
  view->setImage(image);
  EXPECT_FALSE(inkOf(paint(*view)));
}

TEST_F(ViewPainting, AButtonLooksDifferentInEachState) {
  const auto button = UIButton::buttonWithType(UIButtonType::custom);
  button->setFrame(CGRectMake(0, 0, 100, 40));
  button->setTitle("Open", UIControlState::normal);
  button->setTitleColor(blue(), UIControlState::normal);
  button->layoutIfNeeded();
  const auto normal = inkOf(paint(*button));
  button->setHighlighted(true);
  EXPECT_GT(alphaOf(paint(*button).pixel(2, 20)), 0) << "pressed";
  button->setHighlighted(false);
  button->setEnabled(false);
  const Canvas disabled = paint(*button);
  int darkest = 0;
  for (int x = normal->left; x < normal->right; ++x)
    darkest = std::max(darkest, alphaOf(disabled.pixel(x, static_cast<int>(normal->midY()))));
  EXPECT_GT(darkest, 0);
  EXPECT_LT(darkest, 128) << "disabled";
}

TEST_F(ViewPainting, WindowsArePaintedByLevelAndHiddenOnesAreNot) {
  const auto makeWindow = [](double level, const UIColor& color) {
    auto window = std::make_shared<UIWindow>(CGRectMake(0, 0, 100, 100));
    window->setWindowLevel(level);
    window->setBackgroundColor(color);
    window->setHidden(false);
    return window;
  };
  const auto alert = makeWindow(UIWindowLevelAlert, red());
  const auto normal = makeWindow(UIWindowLevelNormal, blue());
  const auto paintAll = [this] {
    Canvas canvas({100, 100}, 1);
    painter_.paint(UIApplication::sharedApplication(), canvas, {});
    return canvas.pixel(50, 50);
  };
  EXPECT_EQ(paintAll(), opaqueRed);
  alert->setHidden(true);
  EXPECT_EQ(paintAll(), opaqueBlue);
}

}  // namespace
}  // namespace sentrel::screen
