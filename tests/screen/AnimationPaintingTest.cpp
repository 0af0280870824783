#include "tests/screen/ScreenTest.h"

namespace sentrel::screen {
namespace {

class AnimationPainting : public ScreenTest {
 protected:
  /// The left edge of what is seen `time` later.
  int leftAfter(Seconds time) {
    device_.time().advance(time);
    return inkOf(paint(*box_)).value_or(Ink{-1, -1, -1, -1}).left;
  }

  void shake(const std::vector<double>& values) {
    box_->layer().addAnimation(
        CAAnimation::keyframes("transform.translation.x", values, Seconds(1), linear_), "shake");
  }

  const CATiming linear_{.curve = CATiming::Curve::linear};

  std::shared_ptr<UIView> box_ = makeBox(CGRectMake(0, 0, 20, 20), red());
};

TEST_F(AnimationPainting, AFrameIsSeenOnItsWay) {
  UIView::animateWithDuration(Seconds(1), [this] { box_->setFrame(CGRectMake(60, 0, 20, 20)); });
  EXPECT_EQ(leftAfter(Seconds(0)), 0);
  EXPECT_NEAR(leftAfter(Seconds(0.5)), 30, 1);
  EXPECT_EQ(leftAfter(Seconds(0.5)), 60);
}

TEST_F(AnimationPainting, AShakeSwingsToBothSidesAndComesToRest) {
  box_->setFrame(CGRectMake(40, 0, 20, 20));
  shake({-12.0, 12.0, 0.0});
  EXPECT_EQ(leftAfter(Seconds(0)), 28);
  EXPECT_EQ(leftAfter(Seconds(0.25)), 40);
  EXPECT_EQ(leftAfter(Seconds(0.25)), 52);
  EXPECT_EQ(leftAfter(Seconds(0.5)), 40);
  box_->setTransform(CGAffineTransform::makeTranslation(20, 0));
  shake({10.0, 10.0});
  EXPECT_EQ(leftAfter(Seconds(0.5)), 70) << "on top of the transform";
}

TEST_F(AnimationPainting, ASpringSwingsPastItsEnd) {
  box_->setFrame(CGRectMake(30, 0, 20, 20));
  box_->setTransform(CGAffineTransform::makeTranslation(30, 0));
  UIView::animateWithDuration(Seconds(0.4), Seconds(0), /*usingSpringWithDamping=*/0.2,
                              /*initialSpringVelocity=*/1,
                              [this] { box_->setTransform(CGAffineTransform()); });
  int leftmost = leftAfter(Seconds(0));
  EXPECT_EQ(leftmost, 60);
  for (int i = 0; i < 20; ++i)
    leftmost = std::min(leftmost, leftAfter(Seconds(0.02)));
  EXPECT_LT(leftmost, 30);
  EXPECT_EQ(leftAfter(Seconds(0.1)), 30);
}

TEST_F(AnimationPainting, AlphaAndColourAreSeenOnTheirWay) {
  UIView::animateWithDuration(Seconds(1), [this] {
    box_->setAlpha(0);
    box_->setBackgroundColor(blue());
  });
  device_.time().advance(Seconds(0.5));
  const std::uint32_t pixel = paint(*box_).pixel(10, 10);
  EXPECT_NEAR(alphaOf(pixel), 128, 2);
  EXPECT_NEAR(redOf(pixel), blueOf(pixel), 2);
}

TEST_F(AnimationPainting, PushedContentComesFromTheRightInsideTheView) {
  box_->setFrame(CGRectMake(0, 0, 40, 20));
  box_->addSubview(makeBox(CGRectMake(0, 0, 40, 20), blue()));
  box_->layer().addAnimation(CAAnimation::pushFromRight(Seconds(1), linear_), "push");
  device_.time().advance(Seconds(0.5));
  const Canvas canvas = paint(*box_);
  EXPECT_EQ(canvas.pixel(10, 10), opaqueRed);
  EXPECT_EQ(canvas.pixel(30, 10), opaqueBlue);
  EXPECT_EQ(inkOf(canvas)->right, 40);
}

}  // namespace
}  // namespace sentrel::screen
