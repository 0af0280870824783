#include "sentrel/uikit/UIWindow.h"
#include "tests/uikit/UIKitTest.h"

namespace sentrel {
namespace {

using Curve = CATiming::Curve;

class Animation : public UIKitTest {
 protected:
  SteadyTime now() { return device_.time().steadyNow(); }

  double valueOf(const char* key) {
    const auto animation = view_->layer().animationForKey(key);
    return animation ? std::get<double>(animation->value(now())) : -1;
  }

  std::shared_ptr<UIView> view_ = std::make_shared<UIView>(CGRectMake(0, 100, 50, 50));
};

TEST_F(Animation, SetsTheEndStateAtOnceAndRecordsTheWay) {
  UIView::animateWithDuration(Seconds(0.3), [this] {
    view_->setFrame(CGRectMake(0, 60, 50, 50));
    view_->setAlpha(1);
  });
  EXPECT_EQ(view_->frame(), CGRectMake(0, 60, 50, 50));
  const auto records = view_->layer().animations();
  ASSERT_EQ(records.size(), 1u) << "alpha did not change";
  EXPECT_EQ(records[0].keyPath, "frame");
  device_.time().advance(Seconds(0.15));
  EXPECT_NEAR(std::get<CGRect>(records[0].value(now())).origin.y, 80, 1e-3);
  device_.time().advance(Seconds(0.15));
  EXPECT_TRUE(view_->layer().animations().empty());
}

TEST_F(Animation, SeveralChangesInOneRunAreOneWayAndThoseOutsideAreNone) {
  view_->setAlpha(0.7);
  UIView::animateWithDuration(Seconds(1), [this] {
    view_->setAlpha(0.5);
    view_->setAlpha(0);
  });
  view_->setTransform(CGAffineTransform::makeTranslation(1, 0));
  ASSERT_EQ(view_->layer().animations().size(), 1u);
  EXPECT_EQ(valueOf("alpha"), 0.7);
  device_.time().advance(Seconds(0.5));
  EXPECT_NEAR(valueOf("alpha"), 0.35, 1e-3);
}

TEST_F(Animation, CompletesWhenDelayAndDurationAreOver) {
  std::string seen;
  UIView::animateWithDuration(
      Seconds(0.4), Seconds(0.1), 0.2, 1, [this] { view_->setAlpha(0); },
      [&seen](bool finished) { seen = finished ? "finished" : "interrupted"; });
  EXPECT_EQ(valueOf("alpha"), 1) << "it has not begun";
  device_.time().advance(Seconds(0.4999));
  EXPECT_EQ(seen, "");
  device_.time().advance(Seconds(0.001));
  EXPECT_EQ(seen, "finished");
}

TEST_F(Animation, IsInterruptedWhenItsViewGoesOrItsPropertyIsAnimatedAnew) {
  const auto root = std::make_shared<UIView>();
  root->addSubview(view_);
  std::string seen;
  const auto animate = [&](double alpha) {
    UIView::animateWithDuration(
        Seconds(1), [=, this] { view_->setAlpha(alpha); },
        [&seen](bool finished) { seen += finished ? 'f' : 'i'; });
  };
  animate(0.5);
  device_.time().advance(Seconds(0.5));
  animate(0.8);
  device_.time().advance(Seconds(2));
  EXPECT_EQ(seen, "if");
  root->addSubview(view_);
  animate(0.1);
  device_.time().advance(Seconds(0.5));
  root->removeFromSuperview();
  view_->removeFromSuperview();
  device_.time().advance(Seconds(1));
  EXPECT_EQ(seen, "ifi");
}

TEST_F(Animation, IsFinishedWhenTheNextBeginsInTheMomentOfItsEnd) {
  const auto animate = [this](double alpha, UIView::AnimationCompletion completion) {
    UIView::animateWithDuration(
        Seconds(1), [=, this] { view_->setAlpha(alpha); }, std::move(completion));
  };
  bool finished = false;
  device_.time().after(Seconds(1), [&] { process_->run([&] { animate(0, {}); }); });
  animate(0.5, [&finished](bool value) { finished = value; });
  device_.time().advance(Seconds(1));
  EXPECT_TRUE(finished);
}

TEST_F(Animation, RunsWhateverTheWallClockIsSetTo) {
  for (const double shift : {-3600.0, 3600.0}) {
    view_->setAlpha(1);
    UIView::animateWithDuration(Seconds(1), [this] { view_->setAlpha(0); });
    device_.time().setWallClock(device_.time().now() + Seconds(shift));
    device_.time().advance(Seconds(0.5));
    EXPECT_NEAR(valueOf("alpha"), 0.5, 1e-3);
    device_.time().advance(Seconds(0.5));
    device_.time().setWallClock(device_.time().now() + Seconds(shift));
    EXPECT_TRUE(view_->layer().animations().empty());
  }
}

TEST_F(Animation, KeyframesRunThroughTheirValues) {
  view_->layer().addAnimation(
      CAAnimation::keyframes("transform.translation.x", {-12, 12, -12, 12, -6, 6, -3, 3, 0},
                             Seconds(0.6), {Curve::linear}),
      "shake");
  const double step = 0.6 / 8;
  for (const auto& [steps, value] : {std::pair(0.0, -12.0), {0.5, 0.0}, {0.5, 12.0}, {5.0, -3.0}}) {
    device_.time().advance(Seconds(steps * step));
    EXPECT_NEAR(valueOf("shake"), value, 1e-3);
  }
  device_.time().advance(Seconds(2.01 * step));
  EXPECT_EQ(view_->layer().animationForKey("shake"), std::nullopt);
  EXPECT_TRUE(view_->layer().animations().empty());
}

TEST_F(Animation, ProgressFollowsTheTiming) {
  // The eased quarter is that of the cubic (0.42, 0), (0.58, 1), by an independent calculation.
  const struct {
    CATiming timing;
    double fraction;
    double expected;
  } cases[] = {
      {{Curve::linear}, 0.25, 0.25},
      {{Curve::easeInEaseOut}, 0.25, 0.129162},
      {{Curve::easeInEaseOut}, 0.75, 0.870838},
      {{Curve::spring, 1, 0}, -1, 0},
      {{Curve::spring, 0.2, 1}, 1, 1},
  };
  for (const auto& [timing, fraction, expected] : cases)
    EXPECT_NEAR(timing.progress(fraction, Seconds(1)), expected, 1e-5) << fraction;
}

TEST_F(Animation, ASpringStartsWithItsVelocity) {
  const auto speed = [](double velocity, Seconds duration) {
    const double moment = 1e-5;
    return CATiming{Curve::spring, 0.5, velocity}.progress(moment, duration) / moment;
  };
  EXPECT_NEAR(speed(0, Seconds(2)), 0, 0.01);
  EXPECT_NEAR(speed(3, Seconds(2)), 6, 0.01) << "in durations, not in seconds";
}

TEST_F(Animation, ASpringSwingsBeyondItsEndTheMoreTheLessItIsDamped) {
  const auto furthest = [](double damping) {
    double most = 0;
    for (double fraction = 0; fraction < 1; fraction += 0.001)
      most = std::max(most, CATiming{Curve::spring, damping, 1}.progress(fraction, Seconds(0.4)));
    return most;
  };
  EXPECT_GT(furthest(0.2), 1.4);
  EXPECT_GT(furthest(0.7), 1.01);
  EXPECT_LT(furthest(0.7), 1.2);
  EXPECT_LE(furthest(1), 1);
}

}  // namespace
}  // namespace sentrel
